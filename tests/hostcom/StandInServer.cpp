#include "tests/hostcom/StandInServer.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/com/ComServer.h"

namespace nv::hostcomtest {
namespace {

// Registered after the plug-in (whose environment enters COM), removed at the end.
class StandInRegistration : public ::testing::Environment {
 public:
  void SetUp() override { ASSERT_EQ(RegisterStandIn(false), 0u) << "regsvr32 could not register the stand-in"; }
  void TearDown() override { EXPECT_EQ(RegisterStandIn(true), 0u); }
};

const auto* const kRegistration = ::testing::AddGlobalTestEnvironment(std::make_unique<StandInRegistration>().release());

}  // namespace

std::wstring StandInPath() { return comtest::BesideTestProgram(L"nvhoststandin.dll"); }

DWORD RegisterStandIn(bool unregister) { return comtest::RunRegsvr32(StandInPath(), unregister); }

MissingHostClass::MissingHostClass(const CLSID& classId) {
  const std::wstring key = L"CLSID\\" + comtest::GuidText(classId);
  EXPECT_EQ(RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str()), ERROR_SUCCESS);
}

MissingHostClass::~MissingHostClass() { EXPECT_EQ(RegisterStandIn(false), 0u); }

}  // namespace nv::hostcomtest
