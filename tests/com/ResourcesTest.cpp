// The DLL's resources as Windows loads them: the string table in both languages, the
// picture, the icon, the version block, and the four exports.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "common/Utf.h"
#include "platform/win32/com/UniqueHandle.h"
#include "platform/win32/com/WindowsSdk.h"
#include "tests/com/ComServer.h"

namespace nv::comtest {
namespace {

struct LibraryDeleter {
  void operator()(HMODULE module) const noexcept { FreeLibrary(module); }
};
using unique_hmodule = com::unique_handle<HMODULE, LibraryDeleter>;

std::wstring ResourceString(HMODULE module, UINT id) {
  const wchar_t* text = nullptr;
  const int length = LoadStringW(module, id, reinterpret_cast<LPWSTR>(&text), 0);
  return length > 0 ? std::wstring(text, static_cast<std::size_t>(length)) : L"<missing>";
}

std::wstring Wide(std::string_view utf8) {
  const Text text = FromUtf8(utf8);
  return std::wstring(text.begin(), text.end());
}

struct Row {
  UINT id;
  std::string_view french;
  std::string_view english;
};
#define NV_TEXT(name, id, french, english) {id, french, english},
constexpr Row kTable[] = {
#include "resources/StringTable.inc"
};
#undef NV_TEXT

class Resources : public ::testing::Test {
 protected:
  void SetUp() override {
    module_.reset(LoadLibraryExW(ServerPath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
    ASSERT_TRUE(module_);
  }
  unique_hmodule module_;
};

TEST_F(Resources, StringTableHoldsEveryTextInBothLanguages) {
  for (const Row& row : kTable) {
    EXPECT_EQ(ResourceString(module_.get(), row.id), Wide(row.french)) << row.id;
    EXPECT_EQ(ResourceString(module_.get(), row.id + 10000), Wide(row.english)) << row.id + 10000;
  }
  EXPECT_EQ(ResourceString(module_.get(), 1), L"&Valider");
  EXPECT_EQ(ResourceString(module_.get(), 10001), L"&Confirm");
  EXPECT_EQ(ResourceString(module_.get(), 120), L"D\u00E9concat\u00E9nation");
  EXPECT_EQ(ResourceString(module_.get(), 10120), L"Extraction");
  EXPECT_EQ(ResourceString(module_.get(), 603).substr(0, 14), L"Cette valeur n");
}

// Strings live in blocks of 16: both ranges are in the French (0x040C) table.
TEST_F(Resources, StringTableIsFrench) {
  const WORD french = MAKELANGID(LANG_FRENCH, SUBLANG_FRENCH);
  for (const UINT id : {1u, 603u, 10001u, 10603u}) {
    EXPECT_NE(FindResourceExW(module_.get(), RT_STRING, MAKEINTRESOURCEW(id / 16 + 1), french), nullptr) << id;
  }
}

TEST_F(Resources, PictureIs16By16In16Colours) {
  const HRSRC found = FindResourceW(module_.get(), L"WRAPPER_PICTURE", RT_BITMAP);
  ASSERT_NE(found, nullptr);
  const auto* header = static_cast<const BITMAPINFOHEADER*>(LockResource(LoadResource(module_.get(), found)));
  ASSERT_NE(header, nullptr);
  EXPECT_EQ(header->biWidth, 16);
  EXPECT_EQ(header->biHeight, 16);
  EXPECT_EQ(header->biBitCount, 4);
}

TEST_F(Resources, IconIs32By32In256Colours) {
#pragma pack(push, 2)
  struct GroupEntry {
    BYTE width, height, colours, reserved;
    WORD planes, bitCount;
    DWORD bytes;
    WORD id;
  };
  struct Group {
    WORD reserved, type, count;
    GroupEntry entries[1];
  };
#pragma pack(pop)
  const HRSRC found = FindResourceW(module_.get(), L"WRAPPER_ICON", RT_GROUP_ICON);
  ASSERT_NE(found, nullptr);
  const auto* group = static_cast<const Group*>(LockResource(LoadResource(module_.get(), found)));
  ASSERT_NE(group, nullptr);
  ASSERT_EQ(group->count, 1);
  EXPECT_EQ(group->entries[0].width, 32);
  EXPECT_EQ(group->entries[0].height, 32);
  EXPECT_EQ(group->entries[0].bitCount, 8);
  EXPECT_EQ(group->entries[0].colours, 0) << "256 colours are written as 0";
}

TEST(Version, Is6_1_0_540AndSelfRegistering) {
  const std::wstring path = ServerPath();
  DWORD ignored = 0;
  std::string block(GetFileVersionInfoSizeW(path.c_str(), &ignored), '\0');
  ASSERT_FALSE(block.empty());
  ASSERT_TRUE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
  VS_FIXEDFILEINFO* fixed = nullptr;
  UINT size = 0;
  ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &size));
  EXPECT_EQ(fixed->dwFileVersionMS, 0x00060001u);
  EXPECT_EQ(fixed->dwFileVersionLS, 540u);
  EXPECT_EQ(fixed->dwProductVersionMS, 0x00060001u);
  EXPECT_EQ(fixed->dwProductVersionLS, 540u);
  const std::pair<const wchar_t*, const wchar_t*> strings[] = {
      {L"FileVersion", L"6.01.0540"}, {L"ProductVersion", L"6.01.0540"}, {L"InternalName", L"NVextch"},
      {L"OriginalFilename", L"NVextch.dll"}, {L"OLESelfRegister", L""}};
  for (const auto& [name, expected] : strings) {
    const std::wstring query = std::wstring(L"\\StringFileInfo\\040C04B0\\") + name;
    wchar_t* value = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), query.c_str(), reinterpret_cast<void**>(&value), &length))
        << std::string(query.begin(), query.end());
    EXPECT_STREQ(value, expected);
  }
}

TEST(Exports, AreTheFourEntryPointsUndecorated) {
  const unique_hmodule module(LoadLibraryW(ServerPath().c_str()));
  ASSERT_TRUE(module);
  for (const char* name : {"DllGetClassObject", "DllCanUnloadNow", "DllRegisterServer", "DllUnregisterServer"}) {
    EXPECT_NE(GetProcAddress(module.get(), name), nullptr) << name;
  }
}

}  // namespace
}  // namespace nv::comtest
