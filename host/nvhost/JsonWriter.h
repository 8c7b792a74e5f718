#pragma once
// The little JSON that nvhost writes: quoted texts (UTF-8, control characters and lone
// surrogates escaped) and the joining of members and elements.
#include <string>
#include <vector>

#include "common/Text.h"

namespace nv {

std::string JsonString(TextView text);
// The same without its quotes, appended to `out`: a value of many MiB written in pieces
// (whole characters each) reads as one string between the quotes written around them.
void AppendJsonStringBody(TextView text, std::string& out);
std::string JsonString(const std::string& utf8);

// {"a":1,"b":"x"} from members already written as "\"a\":1".
std::string JsonObject(const std::vector<std::string>& members);
std::string JsonArray(const std::vector<std::string>& elements);
// One member: the quoted name, a colon, the value as written.
std::string JsonMember(const std::string& name, const std::string& value);

}  // namespace nv
