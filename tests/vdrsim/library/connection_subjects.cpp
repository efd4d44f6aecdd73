#include "subject.h"

namespace library {

namespace {

std::string Connection(int number) { return Numbered("connection", number); }

Read ListConnections() {
  wire::Bytes buffer(131072);
  const int result = VDRZAX_GetConnections(buffer.data());
  return ReadEntries(result, buffer, 400);
}

}  // namespace

std::vector<Subject> ConnectionSubjects() {
  return {{
      .name = "Connection",
      .cap = 327,
      .set =
          [](int number, uint32_t version) {
            return ErrorOf(VDRZAX_PlumbVdrConnection(
                Connection(number).c_str(), "second", 3, version == 1 ? "fourth" : nullptr, "fifth",
                std::string(255, '6').c_str(), 0x07000000 + version));
          },
      .remove =
          [](int number) {
            return ErrorOf(VDRZAX_UnPlumbVdrConnection(Connection(number).c_str()));
          },
      .get =
          [](int number) {
            return FindIn(ListConnections(), 400, wire::Wire(64).Text(0, Connection(number)));
          },
      .list = ListConnections,
      .record =
          [](int number, uint32_t version) {
            return wire::Wire(400)
                .Text(0, Connection(number))
                .Text(64, "second")
                .Text(80, version == 1 ? "fourth" : "")
                .Text(98, "fifth")
                .U32(130, 0x07000000 + version)
                .U8(134, 2)
                .U32(136, 0x07000000 + version)
                .Text(140, std::string(255, '6'));
          },
  }};
}

}  // namespace library
