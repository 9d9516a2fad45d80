#include "files/GroupFileStore.h"

#include <filesystem>

#include "files/GroupFile.h"

namespace quorvex {
namespace {

class GroupFileStore : public GroupStore {
 public:
  explicit GroupFileStore(std::size_t numIV) : numIV_(numIV) {}

  std::string Path() const override {
    std::error_code failure;  // of a working directory that is gone; the bare name then says it
    return (std::filesystem::current_path(failure) / GroupFileName(numIV_)).string();
  }
  std::optional<std::vector<std::string>> Read() const override { return ReadGroupFile(numIV_); }
  bool Write(const std::vector<std::string>& ids) override { return WriteGroupFile(ids, numIV_) == 0; }

 private:
  std::size_t numIV_;
};

}  // namespace

std::unique_ptr<GroupStore> OpenGroupFile(std::size_t independentVariables) {
  return std::make_unique<GroupFileStore>(independentVariables);
}

}  // namespace quorvex
