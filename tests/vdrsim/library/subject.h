#pragma once

#include <vdrzax.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "wire.h"

// What the functions of the library make and show on a simulated datapath.
namespace library {

// 0 for a call that succeeded, else what it left in errno.
inline int ErrorOf(int result) { return result == 0 ? 0 : errno; }

// What a getter gave.
struct Read {
  int error;
  wire::Bytes bytes;
};

// Names what differs from `expected`, and is empty when nothing does.
std::string Difference(const Read& read, const wire::Wire& expected);

template <typename Record>
Read ReadRecord(int result, Record* record, void (*release)(Record*)) {
  if (result != 0) return {.error = errno, .bytes = {}};
  wire::Bytes bytes(sizeof(Record));
  std::memcpy(bytes.data(), record, bytes.size());
  release(record);
  return {.error = 0, .bytes = std::move(bytes)};
}

// All records of a list, one after another.
Read ReadList(int result, RecordList* list, void (*release)(RecordList*), size_t size);

// The record of a list that has the key at that offset, where no getter shows one alone.
Read FindIn(const Read& list, size_t size, const wire::Bytes& key, size_t offset = 0);
inline Read FindIn(const Read& list, size_t size, const wire::Wire& key) {
  return FindIn(list, size, key.bytes());
}

// The fixed-width entries of a buffer that was clear before, up to the first that is.
Read ReadEntries(int result, const wire::Bytes& buffer, size_t size);

Read BridgeNetworks(const char* instance);
Read BridgePorts(const char* instance, uint16_t network, uint32_t bridge);

// One kind of objects. They are numbered from 0 on, in the order in which they are listed, and each
// can be set to more than one version.
struct Subject {
  std::string name;
  size_t cap;

  // What the objects live in, if anything: it is made, and each of the ways to end it takes them
  // along.
  std::function<void()> makeParents = {};
  std::vector<std::function<void()>> dropParents = {};

  std::function<int(int number, uint32_t version)> set;
  std::function<int(int number)> remove;
  std::function<Read(int number)> get;
  std::function<Read()> list;
  std::function<wire::Wire(int number, uint32_t version)> record;

  // What the list leaves in errno when there is nothing that the objects could live in.
  int listWithoutParents = ENOENT;
};

std::ostream& operator<<(std::ostream& stream, const Subject& subject);

// "lif-00007": names in the order of their numbers.
std::string Numbered(const std::string& kind, int number);

// A file a family.
std::vector<Subject> InstanceSubjects();
std::vector<Subject> LifSubjects();
std::vector<Subject> RouteSubjects();
std::vector<Subject> BridgeSubjects();
std::vector<Subject> ConnectionSubjects();
std::vector<Subject> E2iSubjects();
std::vector<Subject> McastSubjects();
std::vector<Subject> PolicySubjects();
std::vector<Subject> ServicesSubjects();

}  // namespace library
