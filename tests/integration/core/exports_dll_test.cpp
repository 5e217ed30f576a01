// The DLL as a file: what it exports and imports, and how it lets itself be loaded.

#include <algorithm>
#include <cctype>
#include <cstring>
#include <map>
#include <set>
#include <span>

#include <windows.h>

#include "integration/integration_test.h"

using namespace support;
using testing::ElementsAreArray;

namespace {

// By ordinal, from 2 on.
const std::vector<std::string> kNames = {
    "KorvuISD_SetLogLevel",
    "KorvuISD_SetAPIVersion",
    "KorvuISD_RegisterCallbacks",
    "KorvuISD_Connect",
    "KorvuISD_Shutdown",
    "KorvuISD_BuildMenuButtonId",
    "KorvuISD_GetMenuIndex",
    "KorvuISD_GetButtonIndex",
    "KorvuISD_SetMenuOp",
    "KorvuISD_SetMenuButtonLimit",
    "KorvuISD_SetMenuCenterRightClick",
    "KorvuISD_SetEraserSinglePress",
    "KorvuISD_SetEraserDoublePress",
    "KorvuISD_SetEraserLongPress",
    "KorvuISD_SetTopSinglePress",
    "KorvuISD_SetTopHoverClick",
    "KorvuISD_SetBottomSinglePress",
    "KorvuISD_SetBottomHoverClick",
    "KorvuISD_SetTipSensitivity",
    "KorvuISD_SetTiltSensitivity",
    "KorvuISD_SetBatteryAlertDelay",
    "KorvuISD_SetPenAlert",
    "KorvuISD_SetPenGesturesEnabled",
    "KorvuISD_SetMagnifierEnabled",
    "KorvuISD_SetDockDetachAction",
    "KorvuISD_SetDockPowerSaving",
    "KorvuISD_SetDockAlertTime",
    "KorvuISD_StartKeyCapture",
    "KorvuISD_FinishKeyCapture",
    "KorvuISD_SetSlavedDisplayZoom",
    "KorvuISD_SetOpaqueModeEnabled",
    "KorvuISD_SetOpaqueModeOrientation",
    "KorvuISD_SetOpaqueModeInputMode",
    "KorvuISD_SetOpaqueModeMapping",
    "KorvuISD_SetOpaqueModeSetupState",
    "KorvuISD_SetOpaqueModeSetupSave",
    "KorvuISD_SetOpaqueModeDisplayPath",
};

class Dll : public testing::Test {
 protected:
  template <class Record>
  const Record* At(DWORD address) const {
    return reinterpret_cast<const Record*>(reinterpret_cast<const char*>(library.Module()) +
                                           address);
  }
  const IMAGE_NT_HEADERS64& Headers() const {
    const auto* const dos = At<IMAGE_DOS_HEADER>(0);
    return *At<IMAGE_NT_HEADERS64>(static_cast<DWORD>(dos->e_lfanew));
  }
  const IMAGE_DATA_DIRECTORY& Directory(size_t index) const {
    return Headers().OptionalHeader.DataDirectory[index];
  }
  const IMAGE_EXPORT_DIRECTORY& Exports() const {
    return *At<IMAGE_EXPORT_DIRECTORY>(Directory(IMAGE_DIRECTORY_ENTRY_EXPORT).VirtualAddress);
  }

  Library library;
};

TEST_F(Dll, ExportsThirtyEightFunctionsFromOrdinalOneOn) {
  const IMAGE_EXPORT_DIRECTORY& exports = Exports();
  EXPECT_EQ(exports.NumberOfNames, 37u);
  const std::span functions(At<DWORD>(exports.AddressOfFunctions), exports.NumberOfFunctions);
  std::set<size_t> ordinals;
  std::set<DWORD> addresses;
  for (size_t i = 0; i < functions.size(); ++i) {
    if (functions[i] == 0) continue;  // an ordinal that is not exported; lld's table begins with 0
    ordinals.insert(exports.Base + i);
    addresses.insert(functions[i]);
  }
  EXPECT_EQ(ordinals.size(), 38u);
  EXPECT_EQ(*ordinals.begin(), 1u);
  EXPECT_EQ(*ordinals.rbegin(), 38u);
  EXPECT_EQ(addresses.size(), 38u);
}

TEST_F(Dll, ExportsThirtySevenNamesAndNoOther) {
  const IMAGE_EXPORT_DIRECTORY& exports = Exports();
  const std::span names(At<DWORD>(exports.AddressOfNames), exports.NumberOfNames);
  const std::span indices(At<WORD>(exports.AddressOfNameOrdinals), exports.NumberOfNames);
  std::map<DWORD, std::string> byOrdinal;
  for (size_t i = 0; i < names.size(); ++i) {
    byOrdinal[exports.Base + indices[i]] = At<char>(names[i]);
  }
  // The one without a name is the first.
  EXPECT_FALSE(byOrdinal.contains(1));
  std::vector<std::string> found;
  for (const auto& [ordinal, name] : byOrdinal) found.push_back(name);
  EXPECT_THAT(found, ElementsAreArray(kNames));
  EXPECT_EQ(byOrdinal.begin()->first, 2u);
  EXPECT_EQ(byOrdinal.rbegin()->first, 38u);
}

TEST_F(Dll, HasTheManualRequestAtOrdinalOne) {
  ScriptedService service;
  library.KorvuISD_SetAPIVersion(9);
  ASSERT_EQ(library.KorvuISD_Connect(20000), KorvuISD_ErrorNone);
  service.WaitForBatch();
  const auto send = reinterpret_cast<decltype(&::KorvuISD_SendManual)>(
      reinterpret_cast<void*>(GetProcAddress(library.Module(), MAKEINTRESOURCEA(1))));
  ASSERT_NE(send, nullptr);
  send(LR"({"a":"b"})", nullptr, [](void*, const wchar_t*, size_t*, size_t) {});
  EXPECT_EQ(service.WaitForRequests(ScriptedService::kBatchSize + 1).back(), LR"({"a":"b"})");
}

TEST_F(Dll, ForwardsNoExport) {
  const IMAGE_DATA_DIRECTORY& directory = Directory(IMAGE_DIRECTORY_ENTRY_EXPORT);
  const IMAGE_EXPORT_DIRECTORY& exports = Exports();
  for (const DWORD function :
       std::span(At<DWORD>(exports.AddressOfFunctions), exports.NumberOfFunctions)) {
    EXPECT_TRUE(function < directory.VirtualAddress ||
                function >= directory.VirtualAddress + directory.Size);
  }
}

TEST_F(Dll, NeedsNothingButTheSystemsOwnLibraries) {
  std::vector<std::string> names;
  for (auto* import =
           At<IMAGE_IMPORT_DESCRIPTOR>(Directory(IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress);
       import->Name; ++import) {
    std::string name = At<char>(import->Name);
    std::ranges::transform(name, name.begin(), [](unsigned char c) { return std::tolower(c); });
    names.push_back(name);
  }
  EXPECT_THAT(names, testing::UnorderedElementsAre("kernel32.dll", "msvcrt.dll", "shlwapi.dll"));
  EXPECT_EQ(Directory(IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT).Size, 0u);
}

TEST_F(Dll, IsLoadedAtRandomAddressesAndItsDataIsNotExecuted) {
  const WORD flags = Headers().OptionalHeader.DllCharacteristics;
  EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
  EXPECT_TRUE(flags & 0x0020) << "high entropy";
  EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
  EXPECT_FALSE(Headers().FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED);
  EXPECT_GT(Directory(IMAGE_DIRECTORY_ENTRY_BASERELOC).Size, 0u);
}

TEST_F(Dll, HasNoSectionThatIsBothWrittenAndExecuted) {
  const IMAGE_NT_HEADERS64& headers = Headers();
  for (const IMAGE_SECTION_HEADER& section :
       std::span(IMAGE_FIRST_SECTION(&headers), headers.FileHeader.NumberOfSections)) {
    const DWORD both = IMAGE_SCN_MEM_WRITE | IMAGE_SCN_MEM_EXECUTE;
    EXPECT_NE(section.Characteristics & both, both);
  }
}

// The version resource ---------------------------------------------------------------------------

class DllVersion : public Dll {
 protected:
  void SetUp() override {
    const HRSRC found =
        FindResourceW(library.Module(), MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(16));  // RT_VERSION
    ASSERT_NE(found, nullptr);
    const HGLOBAL loaded = LoadResource(library.Module(), found);
    resource = {static_cast<const char*>(LockResource(loaded)),
                SizeofResource(library.Module(), found)};
  }

  // The value of a string of the resource: its name, a terminator, zeros up to 32 bits, the value.
  std::wstring Value(const std::wstring& name) const {
    const std::wstring_view units(reinterpret_cast<const wchar_t*>(resource.data()),
                                  resource.size() / sizeof(wchar_t));
    const std::wstring wanted = name + L'\0';
    const size_t at = units.find_first_not_of(L'\0', units.find(wanted) + wanted.size());
    return std::wstring(units.substr(at, units.find(L'\0', at) - at));
  }

  std::span<const char> resource;
};

TEST_F(DllVersion, IsTheProjects) {
  const std::string version = KORVU_VERSION;
  EXPECT_EQ(Value(L"FileVersion"), std::wstring(version.begin(), version.end()));
  EXPECT_EQ(Value(L"ProductVersion"), std::wstring(version.begin(), version.end()));
  EXPECT_EQ(Value(L"OriginalFilename"), L"KorvuTabletSettingsAPI.dll");
  EXPECT_FALSE(Value(L"FileDescription").empty());
}

TEST_F(DllVersion, IsThereInNumbersToo) {
  // The fixed part: its signature, then its own version, then those of file and product.
  const std::string_view bytes(resource.data(), resource.size());
  const size_t found = bytes.find("\xBD\x04\xEF\xFE");
  ASSERT_NE(found, bytes.npos);
  std::array<DWORD, 10> fields{};
  ASSERT_LE(found + sizeof(fields), bytes.size());
  std::memcpy(fields.data(), bytes.data() + found, sizeof(fields));
  const auto text = [](DWORD high, DWORD low) {
    return std::to_string(high >> 16) + "." + std::to_string(high & 0xFFFF) + "." +
           std::to_string(low >> 16);
  };
  EXPECT_EQ(text(fields[2], fields[3]), KORVU_VERSION);
  EXPECT_EQ(text(fields[4], fields[5]), KORVU_VERSION);
  EXPECT_EQ(fields[9], 2u) << "not a DLL";
}

}  // namespace
