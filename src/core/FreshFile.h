#pragma once

#include <sys/types.h>

#include <string>

namespace quorvex {

// A file under a name that nobody can foresee, in the folder of another one whose place it will take. It is locked as
// long as it is in use, by which others tell it from what a program that was killed left behind. What still has its
// own name at the end is removed.
class FreshFile {
 public:
  FreshFile() = default;
  ~FreshFile() { Remove(); }
  FreshFile(const FreshFile&) = delete;
  FreshFile& operator=(const FreshFile&) = delete;

  // Each returns 0 or errno. A folder is empty or ends in "/".
  int Create(const std::string& folder, mode_t mode);  // an empty one
  // An empty one without a name, which LinkAs can give it: nothing is left of it where the program is killed.
  int CreateUnnamed(const std::string& folder, mode_t mode);
  int LinkAs(const std::string& name) const;
  int Link(const std::string& folder, const std::string& file);  // a second name of another file
  int CreateInMemory();                                          // an empty one that never has a name
  int RenameTo(const std::string& name) const;                   // replaces what has that name

  void Remove();

  bool HasName() const { return !name_.empty(); }
  int Descriptor() const { return descriptor_; }  // -1 for none, and for a second name

 private:
  std::string name_;
  int descriptor_ = -1;
};

// Removes from a folder the fresh files that nobody has in use.
void RemoveLeftovers(const std::string& folder);

}  // namespace quorvex
