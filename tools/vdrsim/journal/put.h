#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// The parts that lines of a log are made of, each added to a text.
namespace vdrsim {

void PutNumber(std::string& out, uint64_t number);
void PutSigned(std::string& out, int64_t number);

// Two digits a byte.
void PutHex(std::string& out, std::span<const std::byte> bytes, std::string_view separator = {});

// Printable ASCII stands for itself; every other byte is \xNN, and the backslash \\.
void PutEscaped(std::string& out, std::string_view text);

// Puts a text between quotes, all of it in ASCII. One that is no UTF-8 is put as PutEscaped does;
// then the result is false.
bool PutJsonText(std::string& out, std::string_view text);

// The name of an errno value, empty where it has none.
std::string_view ErrorName(int error);

}  // namespace vdrsim
