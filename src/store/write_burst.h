// Writes that belong to one tap. Each stays a write of its own, in its order, and a kill between
// two of them leaves those that have returned; but the disk is waited for once, at the end, instead
// of at each. A power cut before the end leaves a beginning of the burst, never a later write
// without an earlier one. Interface thread only; bursts don't nest.
#pragma once

#include "store/engine.h"

namespace store {

class WriteBurst {
 public:
  explicit WriteBurst(Engine& engine) : engine_(engine), begun_(engine.BeginBurst()) {}
  ~WriteBurst() { End(); }
  WriteBurst(const WriteBurst&) = delete;
  WriteBurst& operator=(const WriteBurst&) = delete;

  // E_FAIL if no write of the burst will be taken.
  HRESULT Begun() const { return begun_; }
  // Waits for the disk. Harmless when the burst has ended.
  HRESULT End() { return engine_.EndBurst(); }

 private:
  Engine& engine_;  // not owned
  const HRESULT begun_;
};

}  // namespace store
