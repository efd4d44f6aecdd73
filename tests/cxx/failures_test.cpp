#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>
#include <vdrzax.hpp>

#include "support/fake_device.h"
#include "support/wire.h"

namespace {

using vdrzax::Client;

constexpr unsigned long kGetInstance = 1;
constexpr unsigned long kGetLogLevel = 9;

// Fails that one command alone.
std::function<fake::Reply(const fake::Command&)> Failing(unsigned long request, int error) {
  return [=](const fake::Command& command) {
    return command.request == request ? fake::Failure(error) : fake::Reply{};
  };
}

TEST(CxxFailures, AnErrorIsASystemErrorThatSaysTheFunction) {
  fake::Device device;
  device.AnswerWith(fake::Failure(EBUSY));
  try {
    Client().delete_instance("edge-1");
    FAIL() << "nothing was thrown";
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code().category(), std::system_category());
    EXPECT_EQ(error.code(), std::errc::device_or_resource_busy);
    EXPECT_EQ(std::string(error.what()).rfind("VDRZAX_DelVdrInstance: ", 0), 0U) << error.what();
  }
}

TEST(CxxFailures, AResultHasAValueOrSaysWhyNot) {
  fake::Device device;
  device.AnswerWith({.bytes = {7, 0, 0, 0}});
  auto level = Client().try_log_level();
  ASSERT_TRUE(level);
  EXPECT_EQ(*level, 7U);
  EXPECT_EQ(std::move(level).value(), 7U);

  device.AnswerWith(fake::Failure(EPERM));
  auto refused = Client().try_log_level();
  EXPECT_FALSE(refused);
  EXPECT_FALSE(refused.has_value());
  EXPECT_STREQ(refused.function(), "VDRZAX_GetLogLevel");
  EXPECT_EQ(refused.code(), std::errc::operation_not_permitted);
  EXPECT_THROW(std::move(refused).value(), vdrzax::error);
  EXPECT_THROW(Client().try_pre_unload().value(), vdrzax::error);
}

TEST(CxxFind, GivesNothingForWhatIsNotThere) {
  fake::Device device;
  device.answer = Failing(kGetInstance, ENOENT);
  EXPECT_FALSE(Client().find_instance("edge-9"));
  ASSERT_EQ(device.commands.size(), 2U);
  EXPECT_EQ(device.commands.back().request, kGetLogLevel);
  const auto found = Client().try_find_instance("edge-9");
  EXPECT_TRUE(found);
  EXPECT_FALSE(found->has_value());
  EXPECT_THROW(Client().instance("edge-9"), vdrzax::error);
}

TEST(CxxFind, GivesWhatIsThereWithOneCommand) {
  fake::Device device;
  device.AnswerWith({.bytes = wire::Pattern(577)});
  EXPECT_TRUE(Client().find_instance("edge-1"));
  EXPECT_EQ(device.commands.size(), 1U);
}

TEST(CxxFind, ThrowsWhenTheDeviceIsMissing) {
  fake::Device device;
  device.openError = ENOENT;
  try {
    static_cast<void>(Client().find_instance("edge-9"));
    FAIL() << "nothing was thrown";
  } catch (const vdrzax::error& error) {
    EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
    EXPECT_STREQ(error.function(), "VDRZAX_GetInstance");
  }
}

TEST(CxxFind, ThrowsForAnyOtherErrno) {
  for (const int error : {ENXIO, EPERM, EINTR, EINVAL, EBADMSG}) {
    fake::Device device;
    device.answer = Failing(kGetInstance, error);
    EXPECT_THROW(Client().find_instance("edge-9"), vdrzax::error) << error;
    EXPECT_EQ(device.commands.size(), 1U);
  }
}

// A device that answers is there, also when it refuses to say the level.
TEST(CxxFind, GivesNothingWhenTheDeviceRefusesTheLogLevel) {
  fake::Device device;
  device.answer = [](const fake::Command& command) {
    return fake::Failure(command.request == kGetInstance ? ENOENT : EPERM);
  };
  EXPECT_FALSE(Client().find_instance("edge-9"));
}

TEST(CxxFailures, AListOfLifsThatCantBeMadeIsOne) {
  fake::Device device;
  device.AnswerWith({.bytes = fake::Bytes(961 + 1)});
  const auto cut = Client().try_lifs("edge-1");
  EXPECT_EQ(cut.failure().code, EBADMSG);
  EXPECT_STREQ(cut.function(), "VDRZAX_GetLifs");
  EXPECT_THROW(Client().lifs("edge-1"), vdrzax::error);

  device.AnswerWith({.bytes = fake::Bytes(961)});
  device.allocations = 0;
  device.failingAllocation = 3;
  EXPECT_EQ(Client().try_lifs("edge-1").failure().code, ENOMEM);
  device.failingAllocation = 0;
  errno = ENOMEM;
  EXPECT_EQ(Client().lifs("edge-1").size(), 1U);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>());
}

TEST(CxxFailures, AReplyThatIsRefusedWithoutAnErrnoIsABadMessage) {
  fake::Device device;
  device.AnswerWith({.bytes = {1, 2}});
  errno = EPERM;
  EXPECT_EQ(Client().try_vm_public_ip_table().failure().code, EBADMSG);
  EXPECT_EQ(Client().try_vm_public_ip_entry(1).failure().code, EBADMSG);
}

TEST(CxxFailures, MemoryThatIsMissingIsOne) {
  fake::Device device;
  device.failingAllocation = 1;
  EXPECT_EQ(Client().try_instance("edge-1").failure().code, ENOMEM);
}

class CxxNode : public testing::Test {
 protected:
  CxxNode() { unsetenv("USE_UPGRADE_DEV"); }
  ~CxxNode() override { unsetenv("USE_UPGRADE_DEV"); }

  static std::string NodeAfter(const Client& vdr) {
    fake::Device device;
    vdr.set_log_level(1);
    return device.commands.at(0).node;
  }
};

TEST_F(CxxNode, IsThatOfTheEnvironmentUnlessTheClientSays) {
  EXPECT_EQ(NodeAfter(Client()), "/qorv/devices/char/zaxdriver/ryn_vdr");
  setenv("USE_UPGRADE_DEV", "0", 1);
  EXPECT_EQ(NodeAfter(Client()), "/qorv/devices/char/zaxdriver/ryn_vdr_ugrade");
  EXPECT_STREQ(getenv("USE_UPGRADE_DEV"), "0");
}

TEST_F(CxxNode, ChosenOnceIsThatOfTheWholeProcess) {
  const Client before;
  EXPECT_EQ(NodeAfter(Client(vdrzax::Node::Upgrade)),
            "/qorv/devices/char/zaxdriver/ryn_vdr_ugrade");
  EXPECT_EQ(NodeAfter(before), "/qorv/devices/char/zaxdriver/ryn_vdr_ugrade");
  EXPECT_EQ(NodeAfter(Client(vdrzax::Node::Normal)), "/qorv/devices/char/zaxdriver/ryn_vdr");
  EXPECT_EQ(NodeAfter(before), "/qorv/devices/char/zaxdriver/ryn_vdr");
}

}  // namespace
