// The pens that callbacks have told of, for both programs that show them.
#pragma once

#include <map>
#include <string>

namespace tool {

// Puts what a callback told of a pen to the others, which go by serial number. A Pen has a
// `serialNumber` and `isDocked`.
template <class Pen>
void NotePen(std::map<std::wstring, Pen>& pens, const Pen& pen) {
  // A pen may be told of before its serial number is known; it is the same pen afterwards.
  if (!pen.serialNumber.empty()) pens.erase(std::wstring());
  const auto known = pens.find(pen.serialNumber);
  const bool wasDocked = known != pens.end() && known->second.isDocked;
  pens.insert_or_assign(pen.serialNumber, pen);
  // The dock belongs to the tablet: where its state changes, all pens share it, and one of them
  // reports it. A pen that is new may know nothing of it yet.
  if (pen.isDocked == wasDocked) return;
  for (auto& [serialNumber, other] : pens) other.isDocked = pen.isDocked;
}

}  // namespace tool
