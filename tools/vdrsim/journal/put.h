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

// Puts a text between quotes, all of it in ASCII. One that is no UTF-8 is put escaped, as people see
// it; then the result is false.
bool PutJsonText(std::string& out, std::string_view text);

}  // namespace vdrsim
