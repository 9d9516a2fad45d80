#include "solve/GroupPick.h"

#include <algorithm>

#include "core/Files.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr const char* kSection = "groupsolve";
constexpr const char* kUserDefined = "UserDefined";
constexpr const char* kUserSpecified = "UserSpecified";

}  // namespace

GroupPick::GroupPick(const ModelCollection& models, Settings& settings, GroupStore& store)
    : models_(models), settings_(settings), store_(store) {
  const auto chosen = [&](const std::string& key) { return settings_.Integer(key, kSection) != 0; };
  for (const auto& model : models_) {
    const bool known = std::ranges::find(Groups, model->Group, &Group::Name) != Groups.end();
    if (!model->UserType && !known) Groups.push_back({model->Group, chosen(model->Group)});
  }
  UserDefined = chosen(kUserDefined);
  UserSpecified = chosen(kUserSpecified);
  stored_ = store_.Read().value_or(std::vector<std::string>());
  Members = stored_;
}

std::vector<std::string> GroupPick::Available() const {
  std::vector<std::string> ids;
  for (const auto& model : models_)
    if (!IsMember(model->id)) ids.push_back(model->id);
  return ids;
}

void GroupPick::Add(const std::string& id) {
  if (Members.empty()) UserSpecified = true;
  Members.push_back(id);
}

void GroupPick::Remove(std::size_t place) { Members.erase(Members.begin() + static_cast<std::ptrdiff_t>(place)); }

bool GroupPick::Accept(Prompter& user) {
  if (!UserDefined && !UserSpecified && std::ranges::none_of(Groups, &Group::Checked)) {
    user.Refuse("Please select the equation group you want to solve.");
    return false;
  }
  if (UserSpecified && Members.empty()) {
    user.Refuse("You have selected a user specified group but have not defined it." + std::string(NL) +
                "Please select from available equations for the user specified group.");
    return false;
  }
  if (Members != stored_ && user.Ask("Do you want to save the changes to the user specified group file?")) {
    if (store_.Write(Members))
      stored_ = Members;
    else
      user.Refuse("Error writing to '" + store_.Path() + "'");
  }
  const auto remember = [&](const std::string& key, bool chosen) { settings_.Set(key, chosen ? "1" : "0", kSection); };
  for (const Group& group : Groups) remember(group.Name, group.Checked);
  remember(kUserDefined, UserDefined);
  remember(kUserSpecified, UserSpecified);
  return true;
}

bool GroupPick::Contains(const ModelClass& model) const {
  if (UserSpecified && IsMember(model.id)) return true;
  if (model.UserType) return UserDefined;
  const auto group = std::ranges::find(Groups, model.Group, &Group::Name);
  return group != Groups.end() && group->Checked;
}

bool GroupPick::IsMember(const std::string& id) const {
  return std::ranges::any_of(Members, [&](const std::string& member) { return EqualNoCase(member, id); });
}

}  // namespace quorvex
