// What may be lost of a diary, and what may come to it, when a command was cut short.
#pragma once

#include <string>

#include "reliability/diary_week.h"

namespace reliability {

// The lines of `a` that `b` lacks, each on a line of its own after `word`; empty for none.
std::string Missing(const char* word, const Picture& a, const Picture& b);

long CountActions(const Picture& picture);

// What is wrong with a picture that was taken when a step hadn't returned; empty for nothing. What
// the step doesn't touch has to be there, what it changes in its old or its new form, and nothing
// that neither of them has. An export leaves what it wrote until it ended, and a program that was
// killed its unfinished files.
std::string Between(const Picture& before, const Picture& after, const Picture& found, bool killed);

}  // namespace reliability
