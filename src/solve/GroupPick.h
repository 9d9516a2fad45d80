#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "engine/ModelCollection.h"

namespace quorvex {

// The file that keeps the group which the user put together.
class GroupStore {
 public:
  virtual ~GroupStore() = default;
  virtual std::string Path() const = 0;
  virtual std::optional<std::vector<std::string>> Read() const = 0;  // nothing where there is none
  virtual bool Write(const std::vector<std::string>& ids) = 0;
};

// The choice of groups of models to solve. It begins with what was chosen last time.
class GroupPick {
 public:
  // All three outlive the choice.
  GroupPick(const ModelCollection& models, Settings& settings, GroupStore& store);

  struct Group {
    std::string Name;
    bool Checked = false;
  };
  std::vector<Group> Groups;  // of the catalogue, in its order
  bool UserDefined = false;   // every model of the user's own
  bool UserSpecified = false;
  std::vector<std::string> Members;  // of the user-specified group, by ID

  // Every ID that may become a member and is none yet, in the order of the collection.
  std::vector<std::string> Available() const;

  // Another member of the user-specified group, which is put together to be solved: the first one chooses it, too.
  void Add(const std::string& id);
  void Remove(std::size_t place);

  // Takes the choice and remembers it for the next time, or refuses it. A user-specified group that was changed is
  // written to its file where the user wants that.
  bool Accept(Prompter& user);

  // Whether a model belongs to what is chosen.
  bool Contains(const ModelClass& model) const;

 private:
  bool IsMember(const std::string& id) const;

  const ModelCollection& models_;
  Settings& settings_;
  GroupStore& store_;
  std::vector<std::string> stored_;  // the members as the file has them
};

}  // namespace quorvex
