// The results of all data operations. A caller tests the sign, except for DB_E_NOTFOUND and
// DB_S_ENDOFROWSET, which it tests exactly.
#pragma once

#include <cstdint>

namespace store {

using HRESULT = int32_t;

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT DB_S_ENDOFROWSET = 0x00040EC6;  // a read found no further row
inline constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003);  // no data file open
inline constexpr HRESULT E_ABORT = static_cast<HRESULT>(0x80004004);    // no unique id
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);     // the engine failed
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);   // id or times refused
inline constexpr HRESULT DB_E_NOTFOUND = static_cast<HRESULT>(0x80040E19);  // no such key

constexpr bool Failed(HRESULT result) {
  return result < 0;
}

}  // namespace store
