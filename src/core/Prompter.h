#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "core/LongWork.h"

namespace quorvex {

// How a command talks to the user. The windows show message boxes and file dialogs; tests record what is said and hold
// the answers ready.
class Prompter {
 public:
  virtual ~Prompter() = default;

  virtual void Refuse(const std::string& text) = 0;  // why nothing was done
  virtual void Inform(const std::string& text) = 0;  // what was done
  virtual bool Ask(const std::string& text) = 0;     // a question, answered Yes or No

  // A question that may also be answered by Cancel: nothing then.
  virtual std::optional<bool> AskOrCancel(const std::string& text) = 0;

  // A text to be typed or changed, nothing when the user cancels.
  virtual std::optional<std::string> AskText(const std::string& text, const std::string& initial) = 0;

  // The same for a colour, as in "(255, 0, 0)", which a window also lets the user pick.
  virtual std::optional<std::string> AskColor(const std::string& text, const std::string& initial) {
    return AskText(text, initial);
  }

  // The name of a file to write, nothing when the user cancels. `filter` reads as in "Text files (*.txt)"; `extension`,
  // without its dot, is put behind a name that has none. `name` is what the dialog begins with.
  virtual std::optional<std::string> ChooseFileToSave(const std::string& title, const std::string& filter,
                                                      const std::string& extension, const std::string& name = {}) = 0;

  // The name of a file to read, nothing when the user cancels. The filter as above.
  virtual std::optional<std::string> ChooseFileToOpen(const std::string& title, const std::string& filter) = 0;

  // Does what may take long; a window shows `text` and how far the work is, and lets the user cancel it. False where
  // they did: the work may then go on by itself for a while, so everything that it touches must be its own.
  virtual bool Wait(const std::string& /*text*/, const std::function<void(const LongWork&)>& work) {
    work(LongWork());
    return true;
  }
};

// What `read` returns, for which the user waits where there is one; nothing where they cancelled.
template <typename T>
std::optional<T> Await(Prompter* user, const std::string& text, std::function<T(const LongWork&)> read) {
  if (user == nullptr) return read(LongWork());
  const auto value = std::make_shared<std::optional<T>>();
  if (!user->Wait(text, [value, read](const LongWork& work) { value->emplace(read(work)); })) return std::nullopt;
  return std::move(*value);
}

}  // namespace quorvex
