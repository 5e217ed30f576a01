#include "settings-service/protocol.h"

#include <string>

#include <gtest/gtest.h>

#include "settings/option_items.h"
#include "transport/messages.h"

namespace tool::service {
namespace {

constexpr std::wstring_view kKey = L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\PenInProx";
constexpr std::wstring_view kItems = L"{\"5\":\"Pan\"},{\"2\":\"Zoom\"}";
constexpr size_t kPiece = 512;  // what a client reads at once

TEST(ServiceProtocol, ReadsTheThreeRequests) {
  EXPECT_EQ(ParseRequest(L"{\"Connected\":\"?\"}").kind, RequestKind::kProbe);

  const Request value = ParseRequest(L"{\"GetVal\":\"a\\\\b\"}");
  EXPECT_EQ(value.kind, RequestKind::kValueRequest);
  EXPECT_EQ(value.key, L"a\\\\b");

  const Request set = ParseRequest(L"{\"a\\\\b\":\"12\"}");
  EXPECT_EQ(set.kind, RequestKind::kSet);
  EXPECT_EQ(set.key, L"a\\\\b");
  EXPECT_EQ(set.value, L"12");
}

TEST(ServiceProtocol, SetMayHaveAnEmptyValueAndMarksInsideIt) {
  const Request empty = ParseRequest(L"{\"key\":\"\"}");
  EXPECT_EQ(empty.kind, RequestKind::kSet);
  EXPECT_EQ(empty.key, L"key");
  EXPECT_EQ(empty.value, L"");
  EXPECT_EQ(ParseRequest(L"{\"key\":\"a\":\"b\"}\"}").value, L"a\":\"b\"}");
}

TEST(ServiceProtocol, ValueRequestMayHaveAnEmptyKey) {
  const Request request = ParseRequest(L"{\"GetVal\":\"\"}");
  EXPECT_EQ(request.kind, RequestKind::kValueRequest);
  EXPECT_EQ(request.key, L"");
}

class MalformedRequest : public testing::TestWithParam<std::wstring_view> {};

TEST_P(MalformedRequest, IsRecognised) {
  EXPECT_EQ(ParseRequest(GetParam()).kind, RequestKind::kMalformed);
}

INSTANTIATE_TEST_SUITE_P(ServiceProtocol, MalformedRequest,
                         testing::Values(L"", L"{", L"{\"", L"{\"\":\"x\"}", L"{\"key\":\"}",
                                         L"{\"key\":\"", L"{\"key\":\"x\"", L"{\"key\"}",
                                         L" {\"key\":\"x\"}", L"{\"key\":\"x\"} ", L"key",
                                         L"{\"key\":[1,2]}", L"\"}", L"{\"GetVal\":\"key"));

TEST(ServiceProtocol, BuildsRepliesToTheCharacter) {
  EXPECT_EQ(BuildReply({ReplyKind::kAck, L"1"}), L"{\"Ack\":\"1\"}");
  EXPECT_EQ(BuildReply({ReplyKind::kValue, L"12"}), L"{\"Val\":\"12\"}");
  EXPECT_EQ(BuildReply({ReplyKind::kValue, L""}), L"{\"Val\":\"\"}");
  EXPECT_EQ(BuildReply({ReplyKind::kNoValue, L""}), L"{\"Val\":}");
}

TEST(ServiceProtocol, BuildsAnnouncementsToTheCharacter) {
  EXPECT_EQ(BuildAnnouncement(L"key", L"1", false), L"{\"key\":\"1\"}");
  EXPECT_EQ(BuildAnnouncement(L"key", kItems, true),
            L"{\"key\":[{\"5\":\"Pan\"},{\"2\":\"Zoom\"}]}");
}

TEST(ServiceProtocol, ListWithoutItemsIsAnnouncedAsAnEmptyText) {
  EXPECT_EQ(BuildAnnouncement(L"key", L"", true), L"{\"key\":\"\"}");
}

TEST(ServiceProtocol, ClientsReadAnnouncementsBack) {
  for (const bool isList : {false, true}) {
    for (const std::wstring_view value :
         {std::wstring_view(L""), std::wstring_view(L"1"), kItems}) {
      for (const auto build : {BuildAnnouncement, BuildLongAnnouncement}) {
        const std::wstring message = build(kKey, value, isList);
        const auto read = KorvuISD::ParseAnnouncement(message);
        EXPECT_TRUE(read.isValid);
        EXPECT_EQ(read.key, kKey);
        EXPECT_EQ(read.value, value);
      }
    }
  }
}

TEST(ServiceProtocol, ClientsFindTheItemsOfAnAnnouncedList) {
  const std::wstring message = BuildAnnouncement(L"SideSwitchOptionsList", kItems, true);
  KorvuISD::OptionItems items(KorvuISD::ParseAnnouncement(message).value);
  EXPECT_EQ(items.Next()->second, L"Pan");
  EXPECT_EQ(items.Next()->first, L"2");
  EXPECT_FALSE(items.Next());
}

TEST(ServiceProtocol, ClientsReadValueRepliesBack) {
  const std::wstring request = L"{\"GetVal\":\"key\"}";
  const std::wstring texts[] = {L"",          L"1",
                                L"{\"Val\":", std::wstring(kItems),
                                L"\"}",       L"{ 0, 0, 1920, 1080 }",
                                L"{\"Val\"",  std::wstring(700, L'v'),
                                L"        8", std::wstring(5000, L'v')};
  for (const std::wstring& text : texts) {
    for (const auto build : {BuildReply, BuildLongReply}) {
      const std::wstring message = build({ReplyKind::kValue, text});
      const auto read = KorvuISD::ClassifyReply(request, message);
      EXPECT_EQ(read.kind, KorvuISD::ReplyKind::kValue);
      EXPECT_EQ(read.value, text);
    }
  }
}

TEST(ServiceProtocol, ClientsIgnoreAReplyWithoutAValueAndKeepTheConnection) {
  for (const auto build : {BuildReply, BuildLongReply}) {
    const auto read =
        KorvuISD::ClassifyReply(L"{\"GetVal\":\"key\"}", build({ReplyKind::kNoValue, L""}));
    EXPECT_EQ(read.kind, KorvuISD::ReplyKind::kIgnoredValue);
  }
}

TEST(ServiceProtocol, ClientsAcceptLongAcknowledgements) {
  const std::wstring ack = BuildLongReply({ReplyKind::kAck, L"1"});
  EXPECT_EQ(KorvuISD::ClassifyReply(L"{\"Connected\":\"?\"}", ack).kind,
            KorvuISD::ReplyKind::kAcknowledged);
  EXPECT_EQ(KorvuISD::ClassifyReply(L"{\"key\":\"1\"}", ack).kind,
            KorvuISD::ReplyKind::kAcknowledged);
}

TEST(ServiceProtocol, ClientsRejectALongRejection) {
  const std::wstring ack = BuildLongReply({ReplyKind::kAck, L"0"});
  EXPECT_EQ(KorvuISD::ClassifyReply(L"{\"Connected\":\"?\"}", ack).kind,
            KorvuISD::ReplyKind::kUnknownProtocol);
  EXPECT_EQ(KorvuISD::ClassifyReply(L"{\"key\":\"1\"}", ack).kind,
            KorvuISD::ReplyKind::kNotAcknowledged);
}

TEST(ServiceProtocol, LongMessagesTakeSeveralReads) {
  EXPECT_GT(BuildLongReply({ReplyKind::kAck, L"1"}).size(), 2 * kPiece);
  EXPECT_GT(BuildLongReply({ReplyKind::kValue, L"1"}).size(), 2 * kPiece);
  EXPECT_GT(BuildLongAnnouncement(kKey, L"1", false).size(), 2 * kPiece);
}

TEST(ServiceProtocol, ClientsMakeNothingOfGarbledMessages) {
  const std::wstring announcement = Garble(BuildAnnouncement(kKey, kItems, true));
  EXPECT_FALSE(KorvuISD::ParseAnnouncement(announcement).isValid);

  const std::wstring ack = Garble(BuildReply({ReplyKind::kAck, L"1"}));
  EXPECT_EQ(KorvuISD::ClassifyReply(L"{\"Connected\":\"?\"}", ack).kind,
            KorvuISD::ReplyKind::kUnknownProtocol);
  EXPECT_EQ(KorvuISD::ClassifyReply(L"{\"key\":\"1\"}", ack).kind,
            KorvuISD::ReplyKind::kNotAcknowledged);

  const std::wstring value = Garble(BuildLongReply({ReplyKind::kValue, std::wstring(kItems)}));
  EXPECT_EQ(KorvuISD::ClassifyReply(L"{\"GetVal\":\"key\"}", value).kind,
            KorvuISD::ReplyKind::kNoValue);
}

}  // namespace
}  // namespace tool::service
