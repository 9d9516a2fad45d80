#include "import/ConnectString.h"

#include <algorithm>

#include "core/NumberText.h"

namespace quorvex {
namespace {

// A value as it stands in a connect string: in braces where it holds a character that means something there, with a
// closing brace doubled.
std::string Braced(std::string_view value) {
  if (value.find_first_of("[]{}(),;?*=!@ ") == std::string_view::npos) return std::string(value);
  std::string braced = "{";
  for (const char c : value) braced += c == '}' ? "}}" : std::string(1, c);
  return braced + '}';
}

struct Field {
  std::string_view Key;    // trimmed
  std::string_view Start;  // the key and what is behind it up to the value
  std::string_view Text;   // of the value, as it stands, braces and blanks included
  std::string Value;
  std::string_view End;  // the semicolon, where there is one
};

// Takes the field at the start of `rest`.
Field TakeField(std::string_view& rest) {
  Field field;
  // A field without "=" is all key: its end must not hide the key of the next one, which may be a password's.
  const std::size_t keyEnd = std::min(rest.find_first_of("=;"), rest.size());
  const bool hasValue = keyEnd < rest.size() && rest[keyEnd] == '=';
  field.Key = Trim(rest.substr(0, keyEnd));
  field.Start = rest.substr(0, keyEnd + (hasValue ? 1 : 0));
  rest.remove_prefix(field.Start.size());
  std::size_t at = std::min(rest.find_first_not_of(' '), rest.size());
  if (at < rest.size() && rest[at] == '{') {
    for (++at; at < rest.size(); field.Value += rest[at++])
      // A closing brace that is doubled belongs to the value.
      if (rest[at] == '}' && (++at == rest.size() || rest[at] != '}')) break;
  }
  const std::size_t end = std::min(rest.find(';', at), rest.size());
  field.Value += Trim(rest.substr(at, end - at));
  field.Text = rest.substr(0, end);
  field.End = rest.substr(end, 1);
  rest.remove_prefix(end + field.End.size());
  return field;
}

}  // namespace

std::string ConnectString(std::string_view source, std::string_view user, std::string_view password) {
  std::string text(Trim(source));
  const auto append = [&](const char* key, std::string_view value) {
    if (value.empty()) return;
    if (!text.empty() && !text.ends_with(';')) text += ';';
    text += key + Braced(value);
  };
  append("Uid=", user);
  append("Pwd=", password);
  return text;
}

std::string ConnectValue(std::string_view connectString, std::string_view key) {
  while (!connectString.empty())
    if (const Field field = TakeField(connectString); EqualNoCase(field.Key, key)) return field.Value;
  return "";
}

std::vector<std::string> ConnectValues(std::string_view connectString) {
  std::vector<std::string> values;
  while (!connectString.empty()) values.push_back(TakeField(connectString).Value);
  return values;
}

std::string SourceName(std::string_view connectString) {
  for (const char* const telling : {"DSN", "Database", "Server", "Driver"})
    if (std::string value = ConnectValue(connectString, telling); !value.empty()) return value;
  return "database";
}

std::string MaskPassword(std::string_view connectString) {
  std::string masked;
  while (!connectString.empty()) {
    const Field field = TakeField(connectString);
    const bool secret =
        field.Start.ends_with('=') && (EqualNoCase(field.Key, "Pwd") || EqualNoCase(field.Key, "Password"));
    masked.append(field.Start).append(secret ? "***" : field.Text).append(field.End);
  }
  return masked;
}

}  // namespace quorvex
