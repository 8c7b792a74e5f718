#pragma once
// The small argument grammar of nvhost: positional words and --options, some of which
// take a value (repeatable ones keep every value in order).
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace nv {

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Arguments {
  std::vector<std::string> positional;
  std::map<std::string, std::vector<std::string>> options;  // "--lang" -> {"en"}
  std::set<std::string> flags;                              // "--new"

  bool Has(const std::string& flag) const { return flags.count(flag) != 0; }
  std::optional<std::string> Value(const std::string& option) const;
  std::vector<std::string> Values(const std::string& option) const;
};

// Refuses unknown options and a value-taking option at the end of the line.
Arguments ParseArguments(const std::vector<std::string>& words, const std::set<std::string>& valueOptions,
                         const std::set<std::string>& flagOptions);

// Exactly `count` positional words, or a usage error naming the command.
void RequirePositional(const Arguments& arguments, std::size_t count, const std::string& usage);

}  // namespace nv
