#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "expect.h"
#include "run.h"

namespace {

using run::Execute;
using run::ExpectSuccess;
using run::ExpectUnusable;
using run::kClient;
using run::kStaticClient;
using run::kVdrsim;
using run::Result;
using run::Supervised;
using run::SupervisedLine;
using run::SupervisedWith;

class RunOfEachLinkage : public testing::TestWithParam<std::string> {};

TEST_P(RunOfEachLinkage, EveryWayToOpenANodeIsServed) {
  ExpectSuccess(Supervised({GetParam(), "check", "open-forms"}));
}

TEST_P(RunOfEachLinkage, AnOpenedNodeHasTheFlagsThatWereAskedFor) {
  ExpectSuccess(Supervised({GetParam(), "check", "open-flags"}));
}

TEST_P(RunOfEachLinkage, CopiesOfADescriptorAreServed) {
  ExpectSuccess(Supervised({GetParam(), "check", "shared-descriptors"}));
}

TEST_P(RunOfEachLinkage, OtherFilesAndRequestsAreUntouched) {
  ExpectSuccess(Supervised({GetParam(), "check", "other-files"}));
}

TEST_P(RunOfEachLinkage, AMalformedCommandFailsAndTheRunGoesOn) {
  ExpectSuccess(Supervised({GetParam(), "check", "malformed"}));
}

TEST_P(RunOfEachLinkage, ThreadsShareOneDatapath) {
  ExpectSuccess(Supervised({GetParam(), "check", "threads"}));
}

TEST_P(RunOfEachLinkage, AStormOfSignalsNeverRepeatsACommand) {
  ExpectSuccess(Supervised({GetParam(), "check", "storm"}));
}

TEST_P(RunOfEachLinkage, APathMayBeSpeltInManyWays) {
  ExpectSuccess(Supervised({GetParam(), "check", "spellings"}));
}

// Read-only opens are served here, and those who look before they open find a device.
TEST_P(RunOfEachLinkage, EveryOpenAndLookIsServedOnDemand) {
  ExpectSuccess(SupervisedWith({"--every-open"}, {GetParam(), "check", "every-open"}));
  ExpectSuccess(SupervisedWith({"--every-open"}, {GetParam(), "check", "open-forms"}));
  ExpectSuccess(SupervisedWith({"--every-open"}, {GetParam(), "check", "other-files"}));
}

INSTANTIATE_TEST_SUITE_P(Clients, RunOfEachLinkage, testing::Values(kClient, kStaticClient),
                         [](const auto& client) {
                           return client.index == 0 ? "Dynamic" : "Static";
                         });

TEST(Calls, ByDefaultOnlyOpensForReadingAndWritingAreHeldUp) {
  ExpectSuccess(Supervised({kClient, "check", "held-up"}));
}

TEST(Calls, AnInputThatThereIsNoMemoryForFails) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "the sanitizer takes more addresses than that";
#endif
  ExpectSuccess(
      Execute({"prlimit", "--as=1500000000", kVdrsim, "run", "--", kClient, "check", "too-large"}));
}

TEST(Calls, ACommandOfAProgramThatCannotBeLookedAtIsRefused) {
  std::vector<std::string> arguments = {kVdrsim, "run", "--", kClient, "check", "hidden"};
  if (geteuid() == 0) {
    const std::vector<std::string> asNobody = {"setpriv", "--reuid=65534", "--regid=65534",
                                               "--clear-groups", "--"};
    arguments.insert(arguments.begin(), asNobody.begin(), asNobody.end());
  }
  ExpectSuccess(Execute(arguments));
}

// Where what may not be looked at seems not to be there.
TEST(Calls, ACommandOfAProgramThatIsHiddenIsRefused) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can hide processes";
  ExpectSuccess(Execute({"unshare", "-m", "sh", "-c",
                         "mount -o remount,hidepid=2 /proc && exec setpriv --reuid=65534 "
                         "--regid=65534 --clear-groups -- vdrsim run -- $CLIENT check hidden"}));
}

TEST(Calls, WhatLinuxWouldAnswerForAPlainFileIsNoRequestOfTheDevice) {
  const Result result = Execute(
      {kVdrsim, "run", "--journal", "/dev/stderr", "--", kClient, "check", "plain-file-requests"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output.find("\"code\":"), std::string::npos) << result.output;
}

TEST(Calls, AnOpenWithoutRoomForADescriptorFailsSo) {
  ExpectSuccess(SupervisedLine("prlimit --pid $PPID --nofile=3:; $CLIENT level; "
                               "prlimit --pid $PPID --nofile=1024:; $CLIENT level"),
                "EMFILE\n0\n");
}

// A name space of mounts in which the host has the nodes, which are the null and the zero device by
// their numbers.
Result WithRealDevice(const std::vector<std::string>& arguments) {
  std::vector<std::string> all = {
      "unshare",
      "-m",
      "sh",
      "-ec",
      "mount -t tmpfs none /mnt; cd /; "
      "for name in *; do case $name in mnt | qorv) ;; *) if [ -L $name ]; then cp -P $name /mnt; "
      "elif [ -d $name ]; then mkdir /mnt/$name; mount --rbind $name /mnt/$name; fi ;; esac; done; "
      "folder=/mnt/qorv/devices/char/zaxdriver; mkdir -p $folder; mknod $folder/ryn_vdr c 1 3; "
      "mknod $folder/ryn_vdr_ugrade c 1 5; "
      "exec chroot /mnt \"$@\"",
      "sh"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return Execute(all);
}

class BesideARealDevice : public testing::Test {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "only root can make a device";
  }
};

TEST_F(BesideARealDevice, ARunIsRefused) {
  ExpectUnusable(WithRealDevice({kVdrsim, "run", "--", "echo", "started"}),
                 "vdrsim: this host has /qorv/devices/char/zaxdriver/ryn_vdr: ");
}

TEST_F(BesideARealDevice, ARecordingIsMade) {
  const std::string file = testing::TempDir() + "vdrsim-beside-" + std::to_string(getpid());
  ExpectSuccess(WithRealDevice({kVdrsim, "record", file, "--", "echo", "started"}), "started\n");
  EXPECT_EQ(unlink(file.c_str()), 0);
}

TEST_F(BesideARealDevice, NoCommandComesToItInARunThatIsWanted) {
  ExpectSuccess(
      WithRealDevice({kVdrsim, "run", "--beside-real-device", "--", kClient, "check", "beside"}));
  ExpectSuccess(WithRealDevice(
                    {"env", "VDRSIM_BESIDE_REAL_DEVICE=1", kVdrsim, "run", "--", kClient, "level"}),
                "0\n");
}

}  // namespace
