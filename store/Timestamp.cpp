#include "store/Timestamp.h"

#include "common/SystemLocale.h"

namespace nv {
namespace {

void AppendTwoDigits(Text& out, int value) {
  out.push_back(static_cast<char16_t>(u'0' + (value / 10) % 10));
  out.push_back(static_cast<char16_t>(u'0' + value % 10));
}

}  // namespace

Text FormatTimestamp(const std::tm& localTime) {
  const Text date = SystemDateSeparator();
  const Text time = SystemTimeSeparator();
  Text out;
  AppendTwoDigits(out, localTime.tm_mday);
  out += date;
  AppendTwoDigits(out, localTime.tm_mon + 1);
  out += date;
  AppendTwoDigits(out, localTime.tm_year % 100);
  out += u' ';
  AppendTwoDigits(out, localTime.tm_hour);
  out += time;
  AppendTwoDigits(out, localTime.tm_min);
  out += time;
  AppendTwoDigits(out, localTime.tm_sec);
  return out;
}

Text CurrentTimestamp() {
  const std::time_t now = std::time(nullptr);
  // The module runs on one thread, so the C library's shared result is safe here.
  return FormatTimestamp(*std::localtime(&now));
}

}  // namespace nv
