#include <gtest/gtest.h>
#include <vdrzax/policy.h>

#include <cstdlib>
#include <string>

#include "policy/result_command.h"
#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using contract::Steps;
using wire::Block;

const contract::ListGetter& TablesGetter() { return getters::List("VDRZAX_GetPolicyTable"); }

fake::Bytes DecodedTable(const fake::Bytes& source) {
  return wire::Decoded(source, {{0, 4}, {4, 64, 't'}, {68, 4}});
}

TEST(PolicyTables, SetSendsKeyAndNameAndNoInstance) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_SetPolicyTable"));
}

TEST(PolicyTables, DeleteSendsTheKeyAlone) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_DelPolicyTable"));
}

TEST(PolicyTables, DeleteLeaves416To479ZeroWhateverTheSetBeforeItNamed) {
  fake::Device device;
  ASSERT_EQ(VDRZAX_SetPolicyTable(1, std::string(63, 't').c_str(), nullptr), 0);
  ASSERT_EQ(VDRZAX_DelPolicyTable(1, nullptr), 0);
  ASSERT_EQ(device.commands.size(), 2u);
  EXPECT_EQ(device.commands[0].input[416], 't');
  EXPECT_BYTES(wire::BytesOf(device.commands[1].input.data() + 416, 64), fake::Bytes(64));
}

TEST(PolicyTables, ANameOf64CharactersIsCutTo63AndTerminated) {
  for (const std::size_t size : {63u, 64u, 70u}) {
    const std::string name(size, 't');
    ExpectCommand([&] { return VDRZAX_SetPolicyTable(1, name.c_str(), nullptr); }, 144,
                  Block().U32(412, 1).Text(416, std::string(63, 't')));
  }
}

TEST(PolicyTables, AllAreListedByTheContractOfAListGetterWithAnAllZeroBlock) {
  contract::ExpectListGetter(TablesGetter());
}

TEST(PolicyTables, EveryRecordOfAListIsCopiedFieldByField) {
  const auto records = contract::DecodeAll(TablesGetter(), wire::Patterns(1000, 72));
  ASSERT_EQ(records.size(), 1000u);
  for (const std::size_t index : {0u, 1u, 500u, 999u}) {
    EXPECT_BYTES(records[index], DecodedTable(wire::Pattern(72, static_cast<unsigned>(index))));
  }
}

TEST(PolicyTables, TheFieldsOfARecordReadWhatTheKernelWrote) {
  const Block source = Block().U32(0, 0x01020304).Text(4, "table-1").U32(68, 0x11121314);
  fake::Device device;
  device.AnswerWith({.bytes = wire::BytesOf(source.bytes().data(), 72)});
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetPolicyTable(&list), 0);
  ASSERT_EQ(list->count, 1);
  const PolicyTableRecord table = *static_cast<const PolicyTableRecord*>(list->entries);
  VDRZAX_ReleaseAllPolicyTable(list);
  EXPECT_EQ(+table.tableKey, 0x01020304u);
  EXPECT_STREQ(table.tableName, "table-1");
  EXPECT_EQ(+table.tableWord, 0x11121314u);
}

TEST(PolicyTables, ANameThatFillsItsFieldArrivesTerminated) {
  const auto records = contract::DecodeAll(TablesGetter(), fake::Bytes(72, 'x'));
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0][66], 'x');
  EXPECT_EQ(records[0][67], 0);
  EXPECT_EQ(records[0][68], 'x');
}

TEST(PolicyTables, BytesBehindATerminatorArriveAsZero) {
  fake::Bytes source = wire::Pattern(72);
  source[10] = 0;
  const auto records = contract::DecodeAll(TablesGetter(), source);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_BYTES(records[0], DecodedTable(source));
  EXPECT_EQ(records[0][11], 0);
}

TEST(PolicyTables, AReplyOf144BytesIsTwoRecords) {
  EXPECT_EQ(contract::DecodeAll(TablesGetter(), wire::Patterns(2, 72)).size(), 2u);
}

TEST(PolicyTablesDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  EXPECT_DEATH(VDRZAX_SetPolicyTable(1, nullptr, nullptr), "");
  EXPECT_DEATH(VDRZAX_GetPolicyTable(nullptr), "");
}

}  // namespace
