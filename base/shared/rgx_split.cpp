#include "rgx_split.h"

#include <regex>

#include "VRKBasExceptionModel.h"

namespace {

std::regex Compile(const cow_String& pattern) {
  try {
    return std::regex(pattern.c_str(), pattern.Length());
  } catch (const std::regex_error& error) {
    VRKBasExceptionModel::RaisePatternError(-1, error.what());
  }
}

}  // namespace

cow_List<cow_String> rgx_split(const cow_String& text, const cow_String& pattern) {
  const std::regex expression = Compile(pattern);
  const char* const begin = text.c_str();
  const char* const end = begin + text.Length();
  const char* field = begin;
  cow_List<cow_String> fields;
  try {
    for (std::cregex_iterator match(begin, end, expression), done; match != done; ++match) {
      if (match->length() == 0) continue;
      const char* const separator = begin + match->position();
      fields.Append(cow_String(field, static_cast<int>(separator - field)));
      field = separator + match->length();
    }
  } catch (const std::regex_error& error) {
    VRKBasExceptionModel::RaiseExecError(error.code());
  }
  fields.Append(cow_String(field, static_cast<int>(end - field)));
  return fields;
}
