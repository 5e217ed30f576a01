// Letters for the script's thread.
//
// Any thread posts, and never waits for the script: neither for it to read, nor for room. However
// many letters come in a row, the script's thread is woken once, and takes them in portions that
// it chooses; it is woken again by the first letter after it has found the mailbox empty and wants
// to be woken.
#pragma once

#include <cstddef>
#include <deque>
#include <mutex>
#include <vector>

#include "letter.h"
#include "node_api.h"

namespace korvu_node {

class Mailbox {
 public:
  // From now on until Close letters are kept, and `wake` is called. Script's thread.
  void Open(napi_threadsafe_function wake);
  // Letters are dropped from now on, and `wake` is given back. Script's thread.
  void Close();

  void Post(Letter letter);

  // The next letters, at least one if there is one, and no more once they have `fieldLimit` fields
  // together. If there is none and `mayEnd`, the next one wakes again. Script's thread.
  std::vector<Letter> Take(size_t fieldLimit, bool mayEnd);

 private:
  std::mutex mutex;  // a leaf; guards all that follows
  napi_threadsafe_function wake = nullptr;
  bool isWakeUnderway = false;
  std::deque<Letter> letters;
};

// The process's. Never destroyed: the library's thread may post until the process ends.
Mailbox& TheMailbox();

}  // namespace korvu_node
