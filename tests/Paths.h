#pragma once

#include <string>

namespace quorvex {

// Where the tests find their files and programs. Said in one source, so that a moved checkout builds one object anew.
std::string TestData(const std::string& name);    // below tests/data
std::string TestGolden(const std::string& name);  // below tests/golden
std::string FuzzCorpus();
std::string ConsoleProgram();
std::string DesktopProgram();  // where the desktop program is built, else an empty text
std::string AwkwardDriver();   // a library, as the database manager loads a driver

}  // namespace quorvex
