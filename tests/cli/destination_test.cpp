#include "destination/destination.h"

#include <gtest/gtest.h>

#include "exit_status.h"
#include "host/identity/open_to_others.h"
#include "owner_access.h"
#include "profiles.h"
#include "support/by_name.h"

namespace {

namespace fs = std::filesystem;
using mirnctl::destinationOf;

struct Address {
  std::string name, text, url;  ///< No URL: refused.
};

class DestinationText : public testing::TestWithParam<Address> {};

TEST_P(DestinationText, IsOneOrIsRefused) {
  if (!GetParam().url.empty()) {
    EXPECT_EQ(GetParam().url, destinationOf(GetParam().text).url());
    return;
  }
  EXPECT_THROW(destinationOf(GetParam().text), mirnctl::Failure);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, DestinationText,
    testing::Values(Address{"Plain", "http://server:81", "http://server:81"},
                    Address{"UsualPort", "server", "http://server:8080"},
                    Address{"PortEighty", "http://server:80", "http://server"},
                    Address{"Secure", "https://server", "https://server"},
                    Address{"SecurePort", "https://server:8443/", "https://server:8443"},
                    Address{"SixthVersion", "http://[::1]:81", "http://[::1]:81"},
                    Address{"Socket", "unix:/run/mirn/host.sock", "unix:/run/mirn/host.sock"},
                    Address{"NoSocket", "unix:", ""}, Address{"Nothing", "", ""},
                    Address{"NoHost", "http://:80", ""}, Address{"NoPort", "http://server:", ""},
                    Address{"PortOfWords", "server:http", ""}, Address{"PortTooLarge", "server:65536", ""},
                    Address{"Path", "http://server/api", ""}, Address{"User", "http://me@server", ""},
                    Address{"OtherScheme", "ftp://server", ""}, Address{"Blank", "my server", ""}),
    ByName());

TEST_F(Profiles, TheFirstThatSaysSoIsTaken) {
  EXPECT_EQ("http://127.0.0.1:8080", urlWith({}));
  write("config", "[default]\nhost = usual:1\n[other]\nhost = other:2\n");
  EXPECT_EQ("http://usual:1", urlWith({}));
  m_surroundings.host = "surroundings:3";
  EXPECT_EQ("http://surroundings:3", urlWith({}));
  EXPECT_EQ("http://other:2", urlWith({"", "", "other", ""}));
  EXPECT_EQ("http://told:4", urlWith({"told:4", "", "other", ""}));
}

TEST_F(Profiles, TellTheTokenAndWhomToTrust) {
  const fs::path token = write("mine", "mirn_secret\nsecond line\n");
  write("config", "[far]\nhost = https://far\ntoken-file = " + token.string() + "\nca-file = /ca\n");
  const mirnctl::Destination far = destinationOf({"", "", "far", ""}, m_surroundings);
  EXPECT_EQ("mirn_secret", far.token);
  EXPECT_EQ("/ca", far.caFile);
}

TEST_F(Profiles, ATokenThatOthersMayReadIsRefused) {
  const fs::path token = write("mine", "mirn_secret\n");
  host::openToOthers(token);
  try {
    destinationOf({"", token.string(), "", ""}, m_surroundings);
    FAIL() << "taken";
  } catch (const mirnctl::Failure& failure) {
    EXPECT_EQ(privacyRemedy(token), failure.advice());
  }
}

TEST_F(Profiles, AUnixSocketTakesNoToken) {
  const fs::path token = write("mine", "mirn_secret\n");
  EXPECT_EQ("", destinationOf({"unix:/a", token.string(), "", ""}, m_surroundings).token);
}

TEST_F(Profiles, WhatIsWrongWithThemIsTold) {
  write("config", "[default]\nhots = x\n");
  EXPECT_THROW(urlWith({}), mirnctl::Failure);
  write("config", "[default]\nhost\n");
  EXPECT_THROW(urlWith({}), mirnctl::Failure);
  write("config", "");
  EXPECT_THROW(urlWith({"", "", "other", ""}), mirnctl::Failure);
  EXPECT_THROW(destinationOf({"", (folder() / "none").string(), "", ""}, m_surroundings), mirnctl::Failure);
}

}  // namespace
