#include "plugin/library_choice.h"

#include <stdexcept>
#include <string_view>
#include <system_error>

namespace host {

namespace {

namespace fs = std::filesystem;

/// Every storage library has it.
constexpr char kFirstCall[] = "VexInitialize";

constexpr std::string_view kNameCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_";

}  // namespace

LibraryChoice libraryChoice(const std::string& text) {
  const fs::path path = fs::u8path(text);
  if (path.has_parent_path()) return {path.stem().u8string(), fs::absolute(path)};
  if (text.empty() || text.find_first_not_of(kNameCharacters) != std::string::npos) {
    throw std::runtime_error("\"" + text + "\" is no name of a library; say the path of one, such as ./" +
                             text);
  }
  return {text, librariesFolder() / text / libraryFileName()};
}

std::optional<LibraryChoice> libraryOf(const LoadedModule& module) {
  void* const call = module.findAnywhere(kFirstCall);
  if (call == nullptr) return {};
  const fs::path file = fs::absolute(fs::u8path(fileOf(call)));
  const bool isInstalled = file.parent_path().parent_path() == librariesFolder();
  return LibraryChoice{isInstalled ? file.parent_path().filename().u8string() : file.stem().u8string(), file};
}

void requireChosen(const LibraryChoice& chosen, const std::optional<LibraryChoice>& called) {
  if (!called) throw std::runtime_error("the module calls no storage library, but one was chosen");
  std::error_code error;
  if (fs::equivalent(chosen.file, called->file, error)) return;
  throw std::runtime_error("the module does not call the chosen library but " + called->file.u8string());
}

}  // namespace host
