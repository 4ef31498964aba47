#include "http/host_names.h"

#include <gtest/gtest.h>

#include "answers/answer.h"
#include "support/by_name.h"

namespace host {

namespace {

struct OurRow {
  std::string name;
  std::string authority;
};

class HostNamesOursTest : public testing::TestWithParam<OurRow> {};

TEST_P(HostNamesOursTest, IsOneOfOurs) {
  const HostNames names({"192.0.2.7", "Storage.Example.org", "2001:db8::7"});
  EXPECT_TRUE(names.has(HostNames::hostOf(GetParam().authority)));
}

INSTANTIATE_TEST_SUITE_P(
    Authorities, HostNamesOursTest,
    testing::Values(OurRow{"Localhost", "localhost"}, OurRow{"LocalhostWithPort", "localhost:8080"},
                    OurRow{"AnyCase", "LocalHost"}, OurRow{"Loopback4", "127.0.0.1:1"},
                    OurRow{"Loopback6", "[::1]"}, OurRow{"Loopback6WithPort", "[::1]:65535"},
                    OurRow{"Loopback6InFull", "[0:0:0:0:0:0:0:1]"}, OurRow{"Address", "192.0.2.7"},
                    OurRow{"Address6", "[2001:DB8::7]:80"}, OurRow{"Name", "storage.example.org"},
                    OurRow{"NameFromTheRoot", "storage.example.org."},
                    OurRow{"EmptyPort", "storage.example.org:"}),
    ByName());

class HostNamesForeignTest : public testing::TestWithParam<OurRow> {};

TEST_P(HostNamesForeignTest, IsNotOneOfOurs) {
  EXPECT_FALSE(HostNames({"storage.example.org"}).has(HostNames::hostOf(GetParam().authority)));
}

INSTANTIATE_TEST_SUITE_P(
    Authorities, HostNamesForeignTest,
    testing::Values(OurRow{"Other", "example.org"}, OurRow{"Longer", "storage.example.org.evil.example"},
                    OurRow{"BeneathIt", "a.storage.example.org"}, OurRow{"BeneathLocalhost", "a.localhost"},
                    OurRow{"ShortLoopback", "127.1"}, OurRow{"NumberedLoopback", "2130706433"},
                    OurRow{"AnyAddress", "0.0.0.0"}, OurRow{"MappedLoopback", "[::ffff:127.0.0.1]"}),
    ByName());

class HostNamesRefusalTest : public testing::TestWithParam<OurRow> {};

TEST_P(HostNamesRefusalTest, IsNoHost) { EXPECT_THROW(HostNames::hostOf(GetParam().authority), Refusal); }

INSTANTIATE_TEST_SUITE_P(
    Authorities, HostNamesRefusalTest,
    testing::Values(OurRow{"Empty", ""}, OurRow{"PortAlone", ":80"}, OurRow{"Blank", "local host"},
                    OurRow{"Path", "localhost/"}, OurRow{"User", "user@localhost"},
                    OurRow{"List", "localhost,localhost"}, OurRow{"TwoPorts", "localhost:1:2"},
                    OurRow{"PortTooLarge", "localhost:65536"}, OurRow{"PortTooLong", "localhost:000080"},
                    OurRow{"PortIsAName", "localhost:http"}, OurRow{"PortWithSign", "localhost:+80"},
                    OurRow{"Encoded", "local%68ost"},
                    OurRow{"NotAscii",
                           "l\xC3\xB6"
                           "calhost"},
                    OurRow{"OpenBracket", "[::1"}, OurRow{"BehindBracket", "[::1]x"},
                    OurRow{"NoAddressInBrackets", "[localhost]"}, OurRow{"Address4InBrackets", "[127.0.0.1]"},
                    OurRow{"Zone", "[fe80::1%1]"}, OurRow{"Address6WithoutBrackets", "::1"},
                    OurRow{"TooLong", std::string(254, 'a')}),
    ByName());

}  // namespace

}  // namespace host
