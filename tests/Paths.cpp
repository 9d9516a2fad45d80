#include "Paths.h"

namespace quorvex {

std::string TestData(const std::string& name) { return QUORVEX_TEST_DATA "/" + name; }
std::string TestGolden(const std::string& name) { return QUORVEX_TEST_GOLDEN "/" + name; }
std::string FuzzCorpus() { return QUORVEX_FUZZ_CORPUS; }
std::string ConsoleProgram() { return QUORVEX_PROGRAM; }
std::string DesktopProgram() { return QUORVEX_DESKTOP_PROGRAM; }
std::string AwkwardDriver() { return QUORVEX_AWKWARD_DRIVER; }

}  // namespace quorvex
