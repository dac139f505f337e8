// Pieces of SQL, and what the engine says about it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace BayesHost {

// 'text' with its quotes doubled.
std::string QuoteText(std::string_view text);

// "name" with its quotes doubled.
std::string QuoteName(std::string_view name);

// The file's name from the root on.
std::string FullName(const std::filesystem::path& file);

// A file the way the engine is told of it: the same text in queries and in the list of files it may touch.
std::string QuoteFile(const std::filesystem::path& file);

// The same for a file that is read: there the engine takes names for patterns, and "x[1].csv" would be
// x1.csv.
std::string QuoteSource(const std::filesystem::path& file);

// The engine's error without its kind, its drawing of the query and its advice on settings: one line that
// ends in a period.
std::string MakeReadable(const std::string& engineText);

}  // namespace BayesHost
