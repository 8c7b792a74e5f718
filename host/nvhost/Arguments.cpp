#include "host/nvhost/Arguments.h"

namespace nv {

std::optional<std::string> Arguments::Value(const std::string& option) const {
  const auto found = options.find(option);
  if (found == options.end() || found->second.empty()) return std::nullopt;
  return found->second.back();
}

std::vector<std::string> Arguments::Values(const std::string& option) const {
  const auto found = options.find(option);
  return found == options.end() ? std::vector<std::string>() : found->second;
}

Arguments ParseArguments(const std::vector<std::string>& words, const std::set<std::string>& valueOptions,
                         const std::set<std::string>& flagOptions) {
  Arguments result;
  bool optionsEnded = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (optionsEnded || word.size() < 2 || word.rfind("--", 0) != 0) {
      result.positional.push_back(word);
    } else if (word == "--") {
      optionsEnded = true;
    } else if (valueOptions.count(word) != 0) {
      if (i + 1 >= words.size()) throw UsageError("option " + word + " needs a value");
      result.options[word].push_back(words[++i]);
    } else if (flagOptions.count(word) != 0) {
      result.flags.insert(word);
    } else {
      throw UsageError("unknown option " + word);
    }
  }
  return result;
}

void RequirePositional(const Arguments& arguments, std::size_t count, const std::string& usage) {
  if (arguments.positional.size() != count) throw UsageError("usage: " + usage);
}

}  // namespace nv
