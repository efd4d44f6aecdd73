#include "documents.h"

#include "state/state_reader.h"
#include "state/state_writer.h"

namespace documents {

std::string Save(const vdrsim::State& state) {
  std::string document;
  vdrsim::StateWriter writer(state);
  for (auto piece = writer.Next(); !piece.empty(); piece = writer.Next()) document += piece;
  return document;
}

vdrsim::State Load(std::string_view document) { return vdrsim::ReadState(document, "host.json"); }

std::string With(std::string_view members) {
  std::string document = R"({"format_version": 1)";
  if (!members.empty()) document.append(", ").append(members);
  return document + "}";
}

std::string Complaint(std::string_view document) try {
  Load(document);
  return "";
} catch (const vdrsim::StateFailure& failure) {
  const std::string_view line = failure.what();
  const std::string_view name = "host.json: ";
  return line.starts_with(name) ? std::string(line.substr(name.size()))
                                : "unnamed: " + std::string(line);
}

}  // namespace documents
