#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

// Connect strings of databases: "DSN=lab;Uid=me;Pwd={a;b}", keys in any case.

// A connect string with the user's name and password put behind it, those that are not empty.
std::string ConnectString(std::string_view source, std::string_view user, std::string_view password);

// The value of the first of a key's fields, out of its braces; "" where there is none.
std::string ConnectValue(std::string_view connectString, std::string_view key);

// The values of all fields, out of their braces.
std::vector<std::string> ConnectValues(std::string_view connectString);

// What messages call the database of a connect string, which may hold a password: its data source, database, server or
// driver, whichever is the first that is told.
std::string SourceName(std::string_view connectString);

// The connect string with "***" for each value of Pwd and Password, as logs and answers may have it.
std::string MaskPassword(std::string_view connectString);

}  // namespace quorvex
