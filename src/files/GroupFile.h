#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quorvex {

// The file that keeps the user's group of models for that many independent variables, in the working directory.
std::string GroupFileName(std::size_t numIV);

// Writes the IDs of a group. Returns 0 or the file error's number.
int WriteGroupFile(const std::vector<std::string>& models, std::size_t numIV);

// The IDs of the group; nothing where there is no such file, or it is none.
std::optional<std::vector<std::string>> ReadGroupFile(std::size_t numIV);

}  // namespace quorvex
