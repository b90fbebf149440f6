// The keys of the settings file's [System] section and their values as text. docs/formats.md says
// what each means, and shows the whole file.
#pragma once

#include <functional>
#include <string_view>

#include "core/app_state.h"

namespace core {

// Takes the value of one key into its field. An unknown key, and a value whose form does not fit
// its key, change nothing; ranges are not checked.
void TakeSetting(CAppState& app, std::u16string_view key, std::u16string_view value);

// Hands out every key that is written, with its value, in the order of the file. Stops, and answers
// false, when `write` does.
bool EachSetting(
    const CAppState& app,
    const std::function<bool(std::u16string_view key, std::u16string_view value)>& write);

}  // namespace core
