#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "harness/EditingSession.h"

// Long sequences of random calls next to a model that predicts results, log events, trees, owners
// and reference counts.

namespace {

const int kCalls = 10000;

class RandomEditing : public testing::TestWithParam<unsigned int> {};

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEditing, testing::Values(20261121u, 1u));

TEST_P(RandomEditing, Does_what_the_model_predicts) {
  std::printf("seed %u, %d calls\n", GetParam(), kCalls);
  EditingSession session(GetParam());
  std::string last[3];
  for (int done = 0; done < kCalls;) {
    const std::string call = session.Step();
    if (call.empty()) continue;
    ++done;
    last[0].swap(last[1]);
    last[1].swap(last[2]);
    last[2] = call;
    ASSERT_EQ("", session.Difference())
        << "after call " << done << ": " << last[0] << "; " << last[1] << "; " << last[2];
  }
  for (TreeModel::Result result :
       {TreeModel::DONE, TreeModel::NOT_FOUND, TreeModel::REFUSED, TreeModel::THROWN}) {
    EXPECT_LT(5, session.Seen(result)) << "of result " << result;
  }
  session.Finish();
  EXPECT_EQ("", session.Difference());
}

}  // namespace
