#include "platform/foundation/propertylist/PropertyList.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/objects/MutableDictionary.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/propertylist/PropertyListBinary.h"
#include "platform/foundation/propertylist/PropertyListXmlReader.h"
#include "platform/foundation/text/Utf.h"

namespace platform {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t utf16MarkSize = 2;

bool startsAsUtf16(std::string_view bytes, utf::ByteOrder& order) {
  if (bytes.starts_with("\xFE\xFF")) {
    order = utf::ByteOrder::big;
    return true;
  }
  order = utf::ByteOrder::little;
  return bytes.starts_with("\xFF\xFE");
}

bool isContinuation(char c) noexcept {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80;
}

// Sets line and column from the error's offset in `text`.
void locate(PropertyListError& error, std::string_view text) {
  std::string_view before = text.substr(0, *error.offset);
  if (before.starts_with(byteOrderMark)) before.remove_prefix(byteOrderMark.size());
  error.line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
  const std::size_t lineEnd = before.rfind('\n');
  if (lineEnd != std::string_view::npos) before.remove_prefix(lineEnd + 1);
  const auto continuations = std::count_if(before.begin(), before.end(), isContinuation);
  error.column = before.size() - static_cast<std::size_t>(continuations) + 1;
}

PropertyListResult refused(std::size_t offset, std::string reason, std::string accepted) {
  PropertyListResult result;
  result.error = PropertyListError{std::move(reason), {}, {}, offset, std::move(accepted)};
  return result;
}

// Errors are located in the text, so it must still exist.
PropertyListResult readXml(std::string_view bytes, const std::shared_ptr<const void>& keeper,
                           const PropertyListLimits& limits) {
  PropertyListResult result = readXmlPropertyList(bytes, keeper, limits);
  if (result.error) locate(*result.error, bytes);
  return result;
}

// Error offsets count bytes of the UTF-16 text.
PropertyListResult readUtf16(std::string_view bytes, utf::ByteOrder order,
                             const PropertyListLimits& limits) {
  utf::FromUtf16 converted = utf::fromUtf16(bytes.substr(utf16MarkSize), order);
  if (converted.badOffset) {
    PropertyListResult result =
        refused(converted.text.size(), "an unpaired surrogate or half a UTF-16 unit",
                "whole units, surrogates in pairs");
    locate(*result.error, converted.text);
    result.error->offset = utf16MarkSize + *converted.badOffset;
    result.format = PropertyListFormat::xml1;
    return result;
  }
  auto text = std::make_shared<const std::string>(std::move(converted.text));
  PropertyListResult result = readXml(*text, text, limits);
  if (result.error) {
    const std::string_view before = std::string_view(*text).substr(0, *result.error->offset);
    result.error->offset = utf16MarkSize + 2 * utf::codeUnits(before);
  }
  return result;
}

PropertyListResult readAny(std::string_view bytes, const std::shared_ptr<const void>& keeper,
                           const PropertyListLimits& limits) {
  if (bytes.size() > limits.bytes) {
    const std::string limit = std::to_string(limits.bytes) + " bytes";
    return refused(limits.bytes, "more than " + limit + ", which is the limit", "at most " + limit);
  }
  using binary_property_list::magic;
  if (bytes.starts_with(magic)) return readBinaryPropertyList(bytes, keeper, limits);
  if (bytes.starts_with("bplist")) {
    return refused(6, "this version of the binary form is not supported", "bplist00");
  }
  utf::ByteOrder order{};
  if (startsAsUtf16(bytes, order)) return readUtf16(bytes, order, limits);
  return readXml(bytes, keeper, limits);
}

PropertyListResult readGuarded(std::string_view bytes, const std::shared_ptr<const void>& keeper,
                               const PropertyListLimits& limits) {
  try {
    return readAny(bytes, keeper, limits);
  } catch (const std::bad_alloc&) {
    return refused(0, "there is not enough memory to read it", "a smaller file");
  }
}

void tell(std::string* problem, std::string text) {
  if (problem != nullptr) *problem = std::move(text);
}

}  // namespace

std::string PropertyListError::text() const {
  std::string where;
  if (line && column) {
    where = "line " + std::to_string(*line) + ", column " + std::to_string(*column) + ": ";
  } else if (offset) {
    where = "byte " + std::to_string(*offset) + ": ";
  }
  return where + reason;
}

PropertyListResult readPropertyList(std::string_view bytes, const PropertyListLimits& limits) {
  return readGuarded(bytes, nullptr, limits);
}

PropertyListResult readSharedPropertyList(std::string_view bytes,
                                          const std::shared_ptr<const void>& keeper,
                                          const PropertyListLimits& limits) {
  return readGuarded(bytes, keeper, limits);
}

std::optional<Dictionary> dictionaryWithContentsOfFile(std::string_view path,
                                                       std::string* problem) {
  const std::string name(path);
  FileContents contents = Process::current().service<FileSystem>().read(path);
  if (contents.error) {
    tell(problem, std::move(contents.error.message));
    return std::nullopt;
  }
  const PropertyListResult result =
      readSharedPropertyList(contents.bytes.view(), contents.bytes.buffer());
  if (result.error) {
    tell(problem, name + ": " + result.error->text());
    return std::nullopt;
  }
  const Dictionary* dictionary = result.value.asDictionary();
  if (dictionary == nullptr) {
    tell(problem, name + ": the root is not a dictionary");
    return std::nullopt;
  }
  return *dictionary;
}

bool writeToFileAtomically(const Dictionary& dictionary, std::string_view path,
                           std::string* problem) {
  PropertyListPieces text = writeXmlPropertyListPieces(dictionary);
  if (text.error) {
    tell(problem, std::string(path) + ": not a property list: " + *text.error);
    return false;
  }
  FileError error =
      Process::current().service<FileSystem>().writeAtomically(path, std::span(text.pieces));
  if (!error) return true;
  tell(problem, std::move(error.message));
  return false;
}

bool writeToFileAtomically(const MutableDictionary& dictionary, std::string_view path) {
  return dictionary.writeEntries(
      [path](const Dictionary& entries) { return writeToFileAtomically(entries, path); });
}

}  // namespace platform
