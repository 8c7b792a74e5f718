#pragma once
// The HTML fragment that the host shows for a task. Its odd shape (no escaping, a fixed
// row span, a table left open) is what the host's page is built around.
#include <vector>

#include "common/Text.h"

namespace nv {

Text DescribeTable(const Text& taskName, const Text& title, const std::vector<Text>& labels,
                   const std::vector<Text>& values, const Text& comment);

}  // namespace nv
