// An application of an older API version hands over a record that ends after the callbacks of that
// version: nothing behind it may be read.

#include <cstring>

#include "integration/settings/settings_test.h"
#include "support/memory_pages.h"
#include "support/slot_groups.h"

using namespace settings_test;

namespace {

class ShortRecord : public SettingsTest, public testing::WithParamInterface<support::SlotGroup> {};

TEST_P(ShortRecord, IsNotReadBeyondTheCallbacksOfItsVersion) {
  library.KorvuISD_SetAPIVersion(GetParam().apiVersion);
  const KorvuISD_Callbacks all = CallbackRecorder::All();
  support::GuardedMemory memory(1);
  const size_t byteCount = GetParam().slotCount * sizeof(void*);
  const auto* const record = static_cast<const KorvuISD_Callbacks*>(
      std::memcpy(memory.End() - byteCount, &all, byteCount));
  library.KorvuISD_RegisterCallbacks(record, Context(1));
  EXPECT_EQ(recorder.Calls().size(), 3U);
  library.KorvuISD_RegisterCallbacks(record, Context(1));
  EXPECT_EQ(recorder.Calls().size(), 6U);
}

INSTANTIATE_TEST_SUITE_P(From, ShortRecord, testing::ValuesIn(support::kSlotGroups),
                         support::NameOfGroup);

}  // namespace
