#include <gtest/gtest.h>

#include <iterator>

#include "subject.h"

// The life of each kind of objects, by the library alone.

namespace {

using library::Read;
using library::Subject;

std::vector<Subject> AllSubjects() {
  std::vector<Subject> all;
  for (auto family : {library::InstanceSubjects, library::LifSubjects, library::BridgeSubjects,
                      library::ConnectionSubjects, library::E2iSubjects, library::McastSubjects,
                      library::PolicySubjects, library::RouteSubjects, library::ServicesSubjects}) {
    for (Subject& subject : family()) all.push_back(std::move(subject));
  }
  return all;
}

class LifeOf : public testing::TestWithParam<Subject> {
 protected:
  void SetUp() override {
    if (subject_.makeParents) subject_.makeParents();
  }

  // Whatever a test has left.
  void TearDown() override {
    if (!subject_.dropParents.empty()) return subject_.dropParents.front()();
    for (int number = 0; subject_.remove(number) == 0; ++number) {
    }
  }

  void ExpectShown(int number, uint32_t version) {
    EXPECT_EQ(Difference(subject_.get(number), subject_.record(number, version)), "");
  }

  // The numbers of the objects, all of version 1.
  void ExpectListed(const std::vector<int>& numbers) {
    wire::Bytes expected;
    for (const int number : numbers) {
      const wire::Wire record = subject_.record(number, 1);
      expected.insert(expected.end(), record.bytes().begin(), record.bytes().end());
    }
    const Read read = subject_.list();
    EXPECT_EQ(read.error, 0);
    EXPECT_EQ(wire::Difference(read.bytes, expected), "");
  }

  const Subject& subject_ = GetParam();
};

TEST_P(LifeOf, WhatWasSetIsShownAndWhatIsDeletedIsGone) {
  EXPECT_EQ(subject_.get(0).error, ENOENT);
  EXPECT_EQ(subject_.remove(0), ENOENT);
  ExpectListed({});
  ASSERT_EQ(subject_.set(0, 1), 0);
  ExpectShown(0, 1);
  ASSERT_EQ(subject_.set(1, 1), 0);
  ExpectListed({0, 1});
  ASSERT_EQ(subject_.set(0, 2), 0);
  ExpectShown(0, 2);
  ExpectShown(1, 1);
  ASSERT_EQ(subject_.remove(0), 0);
  EXPECT_EQ(subject_.get(0).error, ENOENT);
  EXPECT_EQ(subject_.remove(0), ENOENT);
  ExpectListed({1});
  ASSERT_EQ(subject_.remove(1), 0);
}

TEST_P(LifeOf, WithoutWhatItLivesInNothingIsFound) {
  for (const auto& dropParents : subject_.dropParents) {
    ASSERT_EQ(subject_.set(0, 1), 0);
    dropParents();
    EXPECT_EQ(subject_.get(0).error, ENOENT);
    EXPECT_EQ(subject_.set(0, 1), ENOENT);
    EXPECT_EQ(subject_.remove(0), ENOENT);
    EXPECT_EQ(subject_.list().error, subject_.listWithoutParents);
    subject_.makeParents();
    EXPECT_EQ(subject_.get(0).error, ENOENT);
    ExpectListed({});
  }
}

TEST_P(LifeOf, ThereIsRoomForAsManyAsTheListHolds) {
  const auto cap = static_cast<int>(subject_.cap);
  for (int number = 0; number < cap; ++number) ASSERT_EQ(subject_.set(number, 1), 0) << number;
  EXPECT_EQ(subject_.set(cap, 1), ENOSPC);
  EXPECT_EQ(subject_.get(cap).error, ENOENT);
  std::vector<int> all;
  for (int number = 0; number < cap; ++number) all.push_back(number);
  ExpectListed(all);
  EXPECT_EQ(subject_.set(cap - 1, 2), 0) << "an update needs no room";
  ExpectShown(cap - 1, 2);
}

INSTANTIATE_TEST_SUITE_P(Every, LifeOf, testing::ValuesIn(AllSubjects()),
                         [](const auto& subject) { return subject.param.name; });

}  // namespace
