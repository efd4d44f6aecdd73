#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "commands.h"

// Rows of the table, which the compiler looks at, put together while the program runs.
namespace {

using namespace vdrctl;

template <typename Type>
std::vector<Type> Of(std::span<const Type> elements) {
  return {elements.begin(), elements.end()};
}

TEST(FewElements, AreNoMoreThanThereIsRoomFor) {
  using Two = Few<int, 2>;
  EXPECT_EQ(Of(Two({}).All()), std::vector<int>{});
  EXPECT_EQ(Of(Two({7, 8}).All()), (std::vector{7, 8}));
  EXPECT_THROW(Two({7, 8, 9}), std::logic_error);
}

TEST(FewElements, AreAddedBehindTheOthers) {
  Few<int, 2> few({7});
  few.Add(8);
  EXPECT_EQ(Of(few.All()), (std::vector{7, 8}));
  EXPECT_THROW(few.Add(9), std::logic_error);
}

constexpr vdrzax::Field kFields[] = {vdrzax::U32("first", 0), vdrzax::U32("second", 4),
                                     vdrzax::U32("third", 8)};
constexpr vdrzax::RecordLayout kLayout{"Three", 12, kFields};

bool CanBeARow(std::initializer_list<Parameter> parameters, const Handler& handler,
               const Reply& reply = {}) {
  try {
    const Command row("object", "verb", "summary", {}, {}, parameters, handler, reply);
    EXPECT_EQ(row.Parameters().size(), parameters.size());
  } catch (const std::logic_error&) {
    return false;
  }
  return true;
}

TEST(Rows, HaveTheParametersOfTheirHandler) {
  constexpr Handler kHandler = kByTheProgram<const char*, uint32_t>;
  EXPECT_TRUE(CanBeARow({kInstance, U32("N", "")}, kHandler));
  EXPECT_FALSE(CanBeARow({}, kHandler));
  EXPECT_FALSE(CanBeARow({kInstance}, kHandler));
  EXPECT_FALSE(CanBeARow({U32("N", ""), kInstance}, kHandler));
  EXPECT_FALSE(CanBeARow({kInstance, U32("N", ""), kLif}, kHandler));
}

TEST(Rows, HaveColumnsOfTheirLayout) {
  constexpr Handler kHandler = kByTheProgram<>;
  const auto list = [](std::span<const char* const> columns) {
    return ListReply<kLayout>(columns);
  };
  const char* const known[] = {"third", "first"};
  const char* const unknown[] = {"second", "fourth"};
  EXPECT_TRUE(CanBeARow({}, kHandler, list({})));
  EXPECT_TRUE(CanBeARow({}, kHandler, list(known)));
  EXPECT_FALSE(CanBeARow({}, kHandler, list(unknown)));
}

// Which of the types below a parameter fits, a digit each.
template <typename... Types>
std::string Fits(const Parameter& parameter) {
  return {(Argument<Types>::Fits(parameter) ? '1' : '0')...};
}

TEST(Parameters, FitTheTypesOfTheirArguments) {
  const struct {
    Parameter parameter;
    const char* fits;
  } cases[] = {
      {U8("N", ""), "1000 0000000"},
      {U16("N", ""), "0100 0000000"},
      {U32("N", ""), "0010 0000000"},
      {U32("--n N", ""), "0010 0000001"},
      {NumberOf<int32_t>("N", ""), "0001 0000000"},
      {U64("N", ""), "0000 0000000"},
      {Number("N", 200, ""), "1111 0000000"},
      {Number("N", 300, ""), "0111 0000000"},
      {Number("N", 70000, ""), "0011 0000000"},
      {Number("N", 3000000000, ""), "0010 0000000"},
      {Ipv4Address("A", ""), "0010 0000000"},
      {Ipv4Address("--a A", ""), "0010 0000001"},
      {Switch("--on", ""), "1000 0000000"},
      {Ipv4Prefix("P", ""), "0000 1000000"},
      {Ipv6Address("A", ""), "0000 0100000"},
      {Ipv6Prefix("P", ""), "0000 0010000"},
      {Mac("M", ""), "0000 0001100"},
      {Text("T", 9, ""), "0000 0000010"},
      {File("F", ""), "0000 0000010"},
      {Choice("C", "a|b", ""), "0000 0000010"},
  };
  for (const auto& [parameter, fits] : cases) {
    EXPECT_EQ((Fits<uint8_t, uint16_t, uint32_t, int32_t>(parameter)) + " " +
                  (Fits<Prefix, Ipv6, Prefix6, MacValue, const MacValue*, const char*,
                        std::optional<uint32_t>>(parameter)),
              fits)
        << KindName(parameter.kind) << " " << parameter.name << " " << parameter.limit;
  }
}

TEST(Parameters, AreAbsentAsNullZeroOrNothing) {
  const Parameter parameter = U32("--n N", "");
  EXPECT_EQ(Argument<uint32_t>::From(parameter, nullptr), 0);
  EXPECT_EQ(Argument<std::optional<uint32_t>>::From(parameter, nullptr), std::nullopt);
  EXPECT_EQ(Argument<std::optional<uint32_t>>::From(parameter, "7"), 7);
  EXPECT_EQ(Argument<Prefix>::From(parameter, nullptr).mask, 0);
  EXPECT_EQ(Argument<const char*>::From(parameter, nullptr), nullptr);
  const MacArgument absent = Argument<const MacValue*>::From(parameter, nullptr);
  EXPECT_EQ(static_cast<const MacValue*>(absent), nullptr);
}

}  // namespace
