#include "support/faulty_files.h"

#include <unistd.h>

#include <utility>

namespace testing_support {

class FaultyFiles::FaultyFile : public platform::File {
 public:
  FaultyFile(FaultyFiles& owner, std::unique_ptr<platform::File> real)
      : owner_(owner), real_(std::move(real)) {}

  int64_t Read(void* data, size_t size) override {
    return owner_.Fails(FileCall::kRead) ? -1 : real_->Read(data, size);
  }
  bool Seek(uint64_t position) override { return real_->Seek(position); }
  bool Write(std::string_view bytes) override {
    if (!owner_.Fails(FileCall::kWrite)) return real_->Write(bytes);
    real_->Write(bytes.substr(0, bytes.size() / 2));
    return false;
  }
  bool Sync() override { return !owner_.Fails(FileCall::kSync) && real_->Sync(); }

 private:
  FaultyFiles& owner_;
  std::unique_ptr<platform::File> real_;
};

bool FaultyFiles::Fails(FileCall call) {
  if (call != FileCall::kAttributes && callsUntilDeath_-- == 0) _exit(0);
  Order& order = orders_[static_cast<size_t>(call)];
  ++order.count;
  return order.count >= order.first && order.count <= order.last;
}

std::unique_ptr<platform::File> FaultyFiles::Wrap(std::unique_ptr<platform::File> file) {
  return file ? std::make_unique<FaultyFile>(*this, std::move(file)) : nullptr;
}

std::unique_ptr<platform::File> FaultyFiles::OpenForReading(std::u16string_view path) {
  return Fails(FileCall::kOpenForReading) ? nullptr : Wrap(real_.OpenForReading(path));
}

std::unique_ptr<platform::File> FaultyFiles::Create(std::u16string_view path) {
  return Fails(FileCall::kCreate) ? nullptr : Wrap(real_.Create(path));
}

std::unique_ptr<platform::File> FaultyFiles::CreateInPlace(std::u16string_view path) {
  return Fails(FileCall::kCreate) ? nullptr : Wrap(real_.CreateInPlace(path));
}

}  // namespace testing_support
