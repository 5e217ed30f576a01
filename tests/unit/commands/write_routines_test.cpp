// The routines that setters end in, with the settings that no setter reaches.

#include "commands/write_routines.h"

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "support/expected_settings.h"

using namespace KorvuISD;

namespace {

constexpr int32_t kFirstWithoutKey = 151;

using Messages = std::vector<std::wstring>;

std::wstring Key(int32_t index) {
  return expected::SettingKeys().at(index);
}
std::wstring Set(int32_t index, const std::wstring& value) {
  return L"{\"" + Key(index) + L"\":\"" + value + L"\"}";
}
std::wstring Request(int32_t index) {
  return L"{\"GetVal\":\"" + Key(index) + L"\"}";
}

ButtonFunctionValue Assignment(int32_t function, const std::wstring& text) {
  ButtonFunctionValue value{};
  value.function = function;
  text.copy(value.text, KORVUISD_NAME_CAPACITY - 1);
  return value;
}

class WriteRoutines : public testing::Test {
 protected:
  Messages Queued() {
    const MutexLock lock(g_apiMutex);
    Messages messages;
    for (;;) {
      OutboundQueue::Outgoing outgoing = client->Queue().TakeMessage();
      if (!outgoing.hasMessage) return messages;
      messages.push_back(std::move(outgoing.message));
    }
  }

  template <class Write>
  void ExpectNoKey(Write write) {
    try {
      write();
      ADD_FAILURE() << "nothing was thrown";
    } catch (const std::out_of_range& failure) {
      EXPECT_STREQ(failure.what(), "invalid map<K, T> key");
    }
    EXPECT_EQ(Queued(), Messages());
  }

  std::shared_ptr<SettingsClient> client = std::make_shared<SettingsClient>(nullptr);
};

TEST_F(WriteRoutines, WriteEveryKeyOfTheTable) {
  for (int32_t index = 0; index < kFirstWithoutKey; ++index) {
    WriteSettingValue(*client, 7, index, false);
    EXPECT_EQ(Queued(), (Messages{Set(index, L"7"), Request(index)}));
  }
}

TEST_F(WriteRoutines, ThrowForAnIndexWithoutKeyAndQueueNothing) {
  for (const int32_t index : {kFirstWithoutKey, 1000, -1, INT32_MAX, INT32_MIN}) {
    SCOPED_TRACE(index);
    ExpectNoKey([&] { WriteSettingValue(*client, 7, index, false); });
    ExpectNoKey([&] { WriteSettingValue(*client, 7, index, true); });
    ExpectNoKey([&] { WriteSettingText(*client, L"text", index); });
  }
  const ButtonFunctionValue value = Assignment(1, L"");
  for (const int32_t index : {kFirstWithoutKey, 1000, -1, -2, INT32_MIN}) {
    SCOPED_TRACE(index);
    ExpectNoKey([&] { WriteButtonFunction(*client, &value, index, false); });
    ExpectNoKey([&] { WriteButtonFunction(*client, nullptr, index, true); });
  }
}

TEST_F(WriteRoutines, ThrowForAButtonWithoutNameKeyEvenIfItsFunctionIsEmptied) {
  const ButtonFunctionValue value = Assignment(1, L"");
  for (const int32_t index : {149, 150}) {
    SCOPED_TRACE(index);
    ExpectNoKey([&] { WriteButtonFunction(*client, &value, index, false); });
    ExpectNoKey([&] { WriteButtonFunction(*client, nullptr, index, true); });
  }
}

TEST_F(WriteRoutines, LookForTheKeystrokesKeyOnlyIfThereIsTextForIt) {
  const ButtonFunctionValue keys = Assignment(8, L"Ctrl+Z");
  ExpectNoKey([&] { WriteButtonFunction(*client, &keys, 148, false, L"Undo"); });

  const ButtonFunctionValue noKeys = Assignment(8, L"");
  WriteButtonFunction(*client, &noKeys, 148, false);
  EXPECT_EQ(Queued(), (Messages{Set(148, L"8"), Request(148), Request(150)}));

  const ButtonFunctionValue app = Assignment(23, L"paint");
  WriteButtonFunction(*client, &app, 148, false);
  EXPECT_EQ(Queued(), (Messages{Set(148, L"23"), Set(149, L"paint"), Request(148), Request(150)}));
}

TEST_F(WriteRoutines, QueueTheMessagesOfAButtonInTheirOrder) {
  client->Applications().Use([](ApplicationMap::Paths& paths) { paths[L"Paint"] = L"paint.exe"; });
  const ButtonFunctionValue app = Assignment(23, L"Paint");
  WriteButtonFunction(*client, &app, 38, false, L"My paint");
  EXPECT_EQ(Queued(), (Messages{Set(38, L"23"), Set(39, L"paint.exe"), Set(40, L"My paint"),
                                Request(38), Request(40)}));
  WriteButtonFunction(*client, &app, 38, false, L"");
  EXPECT_EQ(Queued(), (Messages{Set(38, L"23"), Set(39, L"paint.exe"), Set(40, L""), Request(38),
                                Request(40)}));
  WriteButtonFunction(*client, &app, 38, true, L"My paint");
  EXPECT_EQ(Queued(), (Messages{Set(38, L""), Request(38), Request(40)}));
}

TEST_F(WriteRoutines, WriteTheCodeSignedAndTheValueUnsigned) {
  const ButtonFunctionValue negative = Assignment(-1, L"");
  WriteButtonFunction(*client, &negative, 13, false);
  WriteSettingValue(*client, static_cast<uint32_t>(-1), 115, false);
  EXPECT_EQ(Queued(), (Messages{Set(13, L"-1"), Request(13), Request(15), Set(115, L"4294967295"),
                                Request(115)}));
}

}  // namespace
