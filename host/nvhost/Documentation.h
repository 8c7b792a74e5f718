#pragma once
// What nvhost says about itself: the version, the opening of the general help, and the man
// page and bash completion generated from the commands' help texts.
#include <iosfwd>
#include <string>
#include <vector>

#include "host/nvhost/Commands.h"

namespace nv {

std::string VersionText();
std::string GeneralHelpIntro(bool usesHiveFile);

void WriteManPage(std::ostream& out, const std::vector<Command>& commands);
void WriteBashCompletion(std::ostream& out, const std::vector<Command>& commands);

// The --options named in a command's usage and help, in order of first mention.
std::vector<std::string> CommandOptions(const Command& command);
// The sub-commands of a command ("get", "set" of var), from its usage alternatives.
std::vector<std::string> CommandVerbs(const Command& command);

}  // namespace nv
