#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/json/parse.hpp>
#include <filesystem>

#include "system/system_host.h"

namespace host {

namespace {

namespace fs = std::filesystem;

class ChosenLibrary : public SystemHost {
 protected:
  boost::json::value toldLibrary() {
    HttpConnection connection(m_host->port());
    return boost::json::parse(connection.get("/api/v1", m_host->token()).body()).at("library");
  }

  /// The end of a host that does not start.
  std::string refusal(const std::string& library) {
    HostProcess process({"--module", MIRN_TEST_MODULE, "--port", "0", "--token-file",
                         (m_folder / "token").string(), "--library", library});
    EXPECT_EQ(process.awaitExit(), 1);
    return process.errors();
  }
};

TEST_F(ChosenLibrary, IsOtherwiseTheOneThatTheLoaderFinds) {
  serve();
  EXPECT_EQ(toldLibrary(),
            (boost::json::value{{"name", "libVEXL2"}, {"path", MIRN_TEST_LIBRARY}, {"simulated", true}}));
  stop();
}

TEST_F(ChosenLibrary, IsTheOneInTheFile) {
  const fs::path file = fs::path((m_folder / "elsewhere").string()) / "libVEXL2.so";
  fs::create_directory(file.parent_path());
  fs::copy_file(MIRN_TEST_LIBRARY, file);
  serve({}, {"--library", file.string()});
  EXPECT_EQ(toldLibrary().at("path"), boost::json::value(file.string()));
  EXPECT_EQ(get("mirn/state").status, 200u);
  stop();
}

TEST_F(ChosenLibrary, ThatIsNotThereKeepsTheHostFromStarting) {
  EXPECT_THAT(refusal("./missing.so"), testing::StartsWith("mirn-host: cannot load the library: "));
  EXPECT_THAT(refusal("no-such-library"), testing::HasSubstr("/mirn/vexl2/no-such-library/libVEXL2.so"));
  EXPECT_THAT(refusal("two words"), testing::HasSubstr("\"two words\" is no name of a library"));
}

TEST_F(ChosenLibrary, ThatTheModuleDoesNotCallIsRefused) {
  EXPECT_THAT(refusal(MIRN_TEST_MODULE),
              testing::HasSubstr("the module does not call the chosen library but "));
}

}  // namespace

}  // namespace host
