// The way from the library's thread to the window's.
//
// Callbacks come with the library's lock held, so they only leave a letter here and wait for
// nobody. Announcements may come much faster than a window can be drawn: the window is woken once
// for all letters that have gathered, and of letters about the same thing only the last one is
// kept, or the last few where one of them may be the receipt of a change.
#pragma once

#include <functional>
#include <mutex>
#include <vector>

#include "model/letters.h"

namespace tool::panel {

class Mailbox {
 public:
  // Called on the thread of whoever puts a letter in; must not wait.
  void SetWake(std::function<void()> newWake);

  void Put(Letter letter);

  // All letters, oldest first. The next letter does not wake before Rearm: the reader looks again
  // by itself after a pause, so that it also gets round to drawing while letters keep coming.
  std::vector<Letter> Take();

  // From now on a letter wakes. False if some are there already; then nothing has changed.
  bool Rearm();

 private:
  std::mutex mutex;
  std::function<void()> wake;
  std::vector<Letter> letters;
  bool isArmed = true;
};

}  // namespace tool::panel
