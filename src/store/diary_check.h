// Whether a file that has been opened is a diary, before anything in it is relied on.
#pragma once

#include "store/engine.h"

namespace store {

// The five tables stand there, as tables and with our columns, and no SQL of somebody else's that
// would run: views, triggers, checks, computed columns, indexes of expressions. False also if it
// can't be read; why it is none is noted, as far as it's known.
bool IsDiary(Engine& engine);

}  // namespace store
