// An application of an older API version hands over a record that ends after the callbacks of that
// version: nothing behind it may be read.

#include <cstring>

#include "integration/settings/settings_test.h"

using namespace settings_test;

namespace {

// Memory that ends where a page begins which nobody may touch.
class MemoryBeforeAGuardPage {
 public:
  MemoryBeforeAGuardPage()
      : pages(static_cast<char*>(
            VirtualAlloc(nullptr, 2 * kPageSize, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE))) {
    DWORD previous = 0;
    VirtualProtect(pages + kPageSize, kPageSize, PAGE_NOACCESS, &previous);
  }
  ~MemoryBeforeAGuardPage() { VirtualFree(pages, 0, MEM_RELEASE); }
  MemoryBeforeAGuardPage(const MemoryBeforeAGuardPage&) = delete;
  MemoryBeforeAGuardPage& operator=(const MemoryBeforeAGuardPage&) = delete;

  // Copies the bytes to the very end.
  void* Place(const void* bytes, size_t count) {
    char* const place = pages + kPageSize - count;
    std::memcpy(place, bytes, count);
    return place;
  }

 private:
  static constexpr size_t kPageSize = 4096;
  char* const pages;
};

struct RecordOfVersion {
  int32_t apiVersion;
  size_t slotCount;
};

void PrintTo(const RecordOfVersion& record, std::ostream* out) {
  *out << record.apiVersion;
}

class ShortRecord : public SettingsTest, public testing::WithParamInterface<RecordOfVersion> {};

TEST_P(ShortRecord, IsNotReadBeyondTheCallbacksOfItsVersion) {
  library.KorvuISD_SetAPIVersion(GetParam().apiVersion);
  const KorvuISD_Callbacks all = CallbackRecorder::All();
  MemoryBeforeAGuardPage memory;
  const auto* const record = static_cast<const KorvuISD_Callbacks*>(
      memory.Place(&all, GetParam().slotCount * sizeof(void*)));
  library.KorvuISD_RegisterCallbacks(record, Context(1));
  EXPECT_EQ(recorder.Calls().size(), 3U);
  library.KorvuISD_RegisterCallbacks(record, Context(1));
  EXPECT_EQ(recorder.Calls().size(), 6U);
}

INSTANTIATE_TEST_SUITE_P(From, ShortRecord,
                         testing::Values(RecordOfVersion{-5, 23}, RecordOfVersion{0, 23},
                                         RecordOfVersion{1, 29}, RecordOfVersion{2, 31},
                                         RecordOfVersion{3, 31}, RecordOfVersion{4, 35},
                                         RecordOfVersion{5, 36}, RecordOfVersion{6, 38},
                                         RecordOfVersion{7, 39}, RecordOfVersion{8, 41},
                                         RecordOfVersion{9, 41}),
                         [](const auto& test) {
                           const int32_t version = test.param.apiVersion;
                           return version < 0 ? std::string("Negative") : std::to_string(version);
                         });

}  // namespace
