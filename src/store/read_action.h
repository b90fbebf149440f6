// Reading one Action of the open data file by its id, and the text that reports a fault.
#pragma once

#include <string>
#include <string_view>

#include "store/action.h"
#include "store/hresult.h"

namespace store {

// What came of the two steps by which an Action is read.
struct ActionRead {
  HRESULT result;  // S_OK; DB_S_ENDOFROWSET if the Action is gone; E_POINTER while no file is open
  bool selected;   // the first step went well, the result is the second's

  std::u16string_view Step() const { return selected ? u"GetNextRS" : u"Select"; }
};

ActionRead ReadAction(std::u16string_view id, Action& action);

// "<what> Err (ln=<line>, hr=<result>)": a fault of the data file that no user should ever meet.
// Kept on purpose: `line` is a number that names the place, and no line of these sources.
std::u16string FaultText(std::u16string_view what, int line, HRESULT result);

}  // namespace store
