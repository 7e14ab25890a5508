#include "harness/Balance.h"

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

namespace {

/// Fails every case that leaves an object or a string behind, or a switch of the library changed.
class BalanceListener : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override {
    CXML::ClearXMLError();
    m_before = Balance::Now();
  }

  void OnTestEnd(const testing::TestInfo&) override {
    const std::string changes = Balance::Now().ChangesSince(m_before);
    if (!changes.empty()) ADD_FAILURE() << "left alive:\n" << changes;
    if (g_bDispAddr) ADD_FAILURE() << "left the address decoration on";
    g_bDispAddr = false;
    CLogger::SetSink(nullptr, nullptr);
  }

  Balance m_before = Balance::Now();
};

}  // namespace

int main(int argc, char** argv) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";  // unless the command line says otherwise
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new BalanceListener);
  return RUN_ALL_TESTS();
}
