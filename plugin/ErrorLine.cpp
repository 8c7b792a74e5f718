#include "plugin/ErrorLine.h"

#include "store/Texts.h"

namespace nv {

Text ErrorLine(const ErrorView& error) {
  if (error.number == ErrorNumber::HostError2000 || error.number == ErrorNumber::HostError2001) {
    return Text(error.description);
  }
  Text line = LoadText(TextId::ExecutionErrorPrefix) + DecimalText(error.number) + u" ,";
  line += error.description;
  return line;
}

}  // namespace nv
