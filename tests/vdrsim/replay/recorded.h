#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "folder.h"
#include "in_process.h"
#include "journal/put.h"
#include "replay/recording.h"
#include "support/any_memory.h"

// Recordings of commands as a test has them, and who asks for them.
namespace replay_test {

struct Line {
  uint32_t code;
  wire::Bytes input;
  uint32_t capacity;
  std::string result;
};

inline std::string Hex(const wire::Bytes& bytes) {
  std::string hex;
  vdrsim::PutHex(hex, bytes);
  return hex;
}

// What stands behind the input of a command that gave so many bytes.
inline std::string Gave(uint32_t length, const std::string& output) {
  return "\"errno\":0,\"length\":" + std::to_string(length) +
         ",\"produced\":" + std::to_string(output.size() / 2) + ",\"output\":\"" + output + "\"";
}
inline std::string Failed(const std::string& error, uint32_t length) {
  return "\"errno\":\"" + error + "\",\"length\":" + std::to_string(length) + ",\"produced\":0";
}

inline std::string Write(const Folder& folder, const std::vector<Line>& lines) {
  std::string content = "{\"format\":\"vdrsim-journal\",\"version\":1}\n";
  int seq = 0;
  for (const auto& [code, input, capacity, result] : lines) {
    content += "{\"seq\":" + std::to_string(++seq) +
               ",\"pid\":5,\"node\":\"normal\",\"code\":" + std::to_string(code) + ",\"input\":\"" +
               Hex(input) + "\",\"capacity\":" + std::to_string(capacity) + "," + result + "}\n";
  }
  content += "{\"end\":" + std::to_string(seq) + "}\n";
  const std::string path = folder.Path("file");
  Write(path, content);
  return path;
}

// A command of one of the nodes, whose answer isn't taken yet.
inline vdrsim::Answer Ask(vdrsim::Executor& executor, vdrsim::Node node, uint32_t code,
                          std::span<const std::byte> input, uint32_t capacity,
                          vdrsim::Order* order = nullptr) {
  AnyMemory memory;
  return executor.Execute({.process = 1,
                           .thread = 1,
                           .node = node,
                           .code = code,
                           .input = input,
                           .capacity = capacity,
                           .destination = memory,
                           .order = order});
}
inline vdrsim::Answer Ask(vdrsim::Executor& executor, uint32_t code, uint32_t capacity) {
  return Ask(executor, vdrsim::Node::Normal, code, {}, capacity);
}

}  // namespace replay_test
