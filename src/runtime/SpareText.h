#pragma once

#include <string>

namespace ZTkDb::detail {

// Buffers of statement texts dropped on this thread, for the next texts
// built here. Every create and update fills a template of a kilobyte or
// two and drops it again once the statement ran; a fresh block that size
// makes glibc's allocator sweep its small free lists first, which costs
// more than writing the text does.
//
// TakeSpareText gives an empty string, with the capacity of a dropped
// buffer when there is one; GiveBackText keeps the buffer of `text` (which
// it empties) when it is worth keeping. Both are safe while the thread's
// storage is torn down: nothing is kept then.
std::string TakeSpareText();
void GiveBackText(std::string&& text) noexcept;

}  // namespace ZTkDb::detail
