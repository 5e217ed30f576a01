// Directories and files, as the trace uses them.

#include <array>
#include <cstdio>
#include <memory>
#include <string>

#include <windows.h>
#include <share.h>
#include <shlwapi.h>

#include <gtest/gtest.h>

#include "conformance/outcome.h"

using namespace conformance;

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File Open(const std::wstring& path, const wchar_t* mode) {
  return File(_wfsopen(path.c_str(), mode, _SH_DENYNO));
}

void Write(std::FILE* file, const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), file);
  std::fflush(file);
}

std::string Bytes(const std::wstring& path) {
  const File file = Open(path, L"rb");
  if (!file) return "(none)";
  std::array<char, 256> bytes;
  return std::string(bytes.data(), std::fread(bytes.data(), 1, bytes.size(), file.get()));
}

class Files : public testing::Test {
 protected:
  // An earlier process may have had our number and left its folders.
  void SetUp() override {
    for (int number = 1; number < 10000; ++number) {
      folder = L"c:\\korvu-conformance-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
               std::to_wstring(number);
      if (CreateDirectoryW(folder.c_str(), nullptr)) return;
      ASSERT_EQ(GetLastError(), DWORD{ERROR_ALREADY_EXISTS});
    }
    FAIL() << "no folder could be made";
  }

  std::wstring Path(const wchar_t* name) const { return folder + L"\\" + name; }

  std::wstring folder;
};

TEST_F(Files, ThatAreThereExist) {
  EXPECT_TRUE(PathFileExistsW(folder.c_str()));
  EXPECT_FALSE(PathFileExistsW(Path(L"file.txt").c_str()));
  Open(Path(L"file.txt"), L"a");
  EXPECT_TRUE(PathFileExistsW(Path(L"file.txt").c_str()));
}

TEST_F(Files, AreTheSameInUpperAndLowerCase) {
  Open(Path(L"file.txt"), L"a");
  EXPECT_TRUE(PathFileExistsW(Path(L"FILE.TXT").c_str()));
}

TEST_F(Files, DirectoriesAreMadeOnce) {
  EXPECT_EQ(Try([&] { return CreateDirectoryW(folder.c_str(), nullptr); }),
            FailsWith(ERROR_ALREADY_EXISTS));
  EXPECT_TRUE(CreateDirectoryW(Path(L"inner").c_str(), nullptr));
  EXPECT_TRUE(PathFileExistsW(Path(L"inner").c_str()));
}

TEST_F(Files, DirectoriesAreNotMadeInsideOnesThatAreNotThere) {
  EXPECT_EQ(Try([&] { return CreateDirectoryW(Path(L"absent\\inner").c_str(), nullptr); }),
            FailsWith(ERROR_PATH_NOT_FOUND));
}

TEST_F(Files, CannotBeOpenedInDirectoriesThatAreNotThere) {
  EXPECT_FALSE(Open(Path(L"absent\\file.txt"), L"a"));
}

TEST_F(Files, InTextModeEndTheirLinesWithTwoCharacters) {
  const File file = Open(Path(L"file.txt"), L"a");
  ASSERT_TRUE(file);
  Write(file.get(), "one\ntwo\r\n");
  EXPECT_EQ(Bytes(Path(L"file.txt")), "one\r\ntwo\r\r\n");
}

TEST_F(Files, OpenedForAppendingKeepWhatTheyHold) {
  Write(Open(Path(L"file.txt"), L"a").get(), "one");
  Write(Open(Path(L"file.txt"), L"a").get(), "two");
  EXPECT_EQ(Bytes(Path(L"file.txt")), "onetwo");
}

TEST_F(Files, OpenedForWritingAreEmptiedAndInBinaryModeWrittenAsTheyAre) {
  Write(Open(Path(L"file.txt"), L"a").get(), "one");
  Write(Open(Path(L"file.txt"), L"wb").get(), "two\n");
  EXPECT_EQ(Bytes(Path(L"file.txt")), "two\n");
}

TEST_F(Files, AreReadableWhileTheyAreWritten) {
  const File file = Open(Path(L"file.txt"), L"a");
  Write(file.get(), "one");
  EXPECT_EQ(Bytes(Path(L"file.txt")), "one");
  Write(file.get(), "two");
  EXPECT_EQ(Bytes(Path(L"file.txt")), "onetwo");
}

}  // namespace
