#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "plugin/module_loader.h"
#include "support/words_of_failure.h"

namespace host {

namespace {

/// The C library's own, which is there and no plug-in.
std::string someLibrary() { return fileOf(dlsym(RTLD_DEFAULT, "dlsym")); }

TEST(LoadedModule, OfALibraryIsKnownByTheFileOfItsFunctions) {
  const std::string path = someLibrary();
  EXPECT_TRUE(std::filesystem::path(path).is_absolute()) << path;
  const LoadedModule module(path);
  EXPECT_EQ(fileOf(module.findAnywhere("dlsym")), path);
  EXPECT_EQ(module.findAnywhere("no_such_function"), nullptr);
  EXPECT_EQ(fileOf(nullptr), "");
}

TEST(LoadedModule, TellsWhatItDoesNotExport) {
  const LoadedModule module(someLibrary());
  EXPECT_EQ(wordsOfFailure<std::runtime_error>([&] { module.find<void (*)()>("no_such_function"); }),
            '"' + someLibrary() + "\" is no plug-in module: it exports no no_such_function");
}

}  // namespace

}  // namespace host
