#include "archive.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/by_name.h"

namespace {

using Files = std::vector<std::pair<std::string, std::string>>;

std::string octal(std::uint64_t number, std::size_t digits) {
  std::string text(digits + 1, '\0');
  for (; digits-- > 0; number /= 8) text[digits] = static_cast<char>('0' + number % 8);
  return text;
}

std::string padded(std::string text, std::size_t size) {
  text.resize(size);
  return text;
}

/// A file as an archive has it, up to the next block.
std::string entry(const std::string& name, const std::string& bytes, char type = '0',
                  const std::string& prefix = {}, const std::string& magic = std::string("ustar\00000", 8)) {
  std::string header = padded(name, 100) + octal(0644, 7) + octal(0, 7) + octal(0, 7) +
                       octal(bytes.size(), 11) + octal(0, 11) + "        " + type + padded({}, 100) +
                       padded(magic, 8) + padded({}, 80) + padded(prefix, 167);
  unsigned sum = 0;
  for (const char each : header) sum += static_cast<unsigned char>(each);
  header.replace(148, 7, octal(sum, 6));
  return header + padded(bytes, (bytes.size() + 511) / 512 * 512);
}

const std::string kEnd(1024, '\0');

Files filesIn(const std::string& archive) {
  Files files;
  forEachFile(archive,
              [&](const std::string& name, std::string_view bytes) { files.emplace_back(name, bytes); });
  return files;
}

/// Why it cannot be read; empty: it can.
template <class Read>
std::string refusalOf(const Read& read) {
  try {
    read();
  } catch (const ArchiveError& error) {
    return error.what();
  }
  return {};
}

TEST(Tar, HandsOnPlainFilesInTheirOrder) {
  const Files expected{{"b", "second"}, {"folder/a", std::string(600, 'x')}, {"empty", ""}};
  EXPECT_EQ(expected, filesIn(entry("b", "second") + entry("folder/", "", '5') +
                              entry("folder/a", std::string(600, 'x')) + entry("empty", "", '\0') + kEnd));
}

TEST(Tar, AnEmptyOneHasNone) { EXPECT_EQ(Files(), filesIn(kEnd)); }

struct Named {
  const char* name;
  std::string archive;
  std::string expected;
};

class TarName : public testing::TestWithParam<Named> {};

TEST_P(TarName, IsToldInSeveralPlaces) {
  EXPECT_EQ((Files{{GetParam().expected, "1"}}), filesIn(GetParam().archive + kEnd));
}

INSTANTIATE_TEST_SUITE_P(
    Places, TarName,
    testing::Values(Named{"Field", entry("a/b", "1"), "a/b"}, Named{"BehindADot", entry("./a", "1"), "a"},
                    Named{"WithPrefix", entry("b", "1", '0', "long/folder"), "long/folder/b"},
                    Named{"FieldThatIsFull", entry(std::string(100, 'n'), "1"), std::string(100, 'n')},
                    Named{"Record", entry("x", "12 path=a/b\n", 'x') + entry("short", "1"), "a/b"},
                    Named{"RecordBehindAnother",
                          entry("x", "14 comment=me\n12 path=a/b\n", 'x') + entry("short", "1"), "a/b"},
                    Named{"RecordOfSomethingElse", entry("x", "14 comment=me\n", 'x') + entry("a", "1"), "a"},
                    Named{"OfOtherPrograms", entry("a", "1", '0', "", std::string("ustar  \0", 8)), "a"}),
    ByName());

TEST(Tar, ARecordIsOfTheNextFileAlone) {
  EXPECT_EQ((Files{{"a/b", "1"}, {"c", "2"}}),
            filesIn(entry("x", "12 path=a/b\n", 'x') + entry("short", "1") + entry("c", "2") + kEnd));
}

struct Broken {
  const char* name;
  std::string archive;
  const char* reason;
};

class BrokenTar : public testing::TestWithParam<Broken> {};

TEST_P(BrokenTar, IsRefused) {
  EXPECT_EQ(GetParam().reason, refusalOf([] { filesIn(GetParam().archive); }));
}

std::string withChanged(std::string archive, std::size_t place, char character) {
  archive.at(place) = character;
  return archive;
}

INSTANTIATE_TEST_SUITE_P(
    Ways, BrokenTar,
    testing::Values(Broken{"Nothing", "", "is cut off"}, Broken{"WithoutEnd", entry("a", "1"), "is cut off"},
                    Broken{"InAHeader", entry("a", "1").substr(0, 300), "is cut off"},
                    Broken{"InAFile", entry("a", std::string(600, 'x')).substr(0, 700), "is cut off"},
                    Broken{"OtherBytes", std::string(2048, 'x'), "holds no tar archive"},
                    Broken{"WrongSum", withChanged(entry("a", "1"), 0, 'b') + kEnd, "holds no tar archive"},
                    Broken{"SizeWithoutDigits", withChanged(entry("a", ""), 124, 'z') + kEnd,
                           "holds no tar archive"},
                    Broken{"RecordWithoutLength", entry("x", " path=a\n", 'x') + entry("a", "1") + kEnd,
                           "holds no tar archive"},
                    Broken{"RecordThatIsTooLong", entry("x", "99 path=a\n", 'x') + entry("a", "1") + kEnd,
                           "holds no tar archive"},
                    Broken{"RecordWithoutEnd", entry("x", "10 path=ab", 'x') + entry("a", "1") + kEnd,
                           "holds no tar archive"},
                    Broken{"RecordOfItsLengthAlone", entry("x", "2 ", 'x') + entry("a", "1") + kEnd,
                           "holds no tar archive"}),
    ByName());

/// "hello, machine", as another program packed it.
const std::string kPacked(
    "\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\x03\xcb\x48\xcd\xc9\xc9\xd7\x51\xc8\x4d\x4c\xce\xc8\xcc\x4b\x05\x00"
    "\x05\xe8\x43\x3f\x0e\x00\x00\x00",
    34);

TEST(Gzip, IsUnpackedUpToABound) {
  EXPECT_EQ("hello, machine", unpackedGzip(kPacked, 14));
  EXPECT_EQ("holds too much", refusalOf([] { unpackedGzip(kPacked, 13); }));
}

TEST(Gzip, WhatIsCutOffAnywhereIsRefused) {
  for (std::size_t size = 0; size < kPacked.size(); ++size) {
    EXPECT_NE("", refusalOf([size] { unpackedGzip(std::string_view(kPacked).substr(0, size), 14); })) << size;
  }
}

TEST(Gzip, WhatIsDamagedIsRefused) {
  EXPECT_EQ("is no gzip file", refusalOf([] { unpackedGzip(withChanged(kPacked, 0, 'x'), 14); }));
  EXPECT_EQ("is no gzip file that is known",
            refusalOf([] { unpackedGzip(withChanged(kPacked, 3, '\x80'), 14); }));
  EXPECT_EQ("is damaged", refusalOf([] { unpackedGzip(withChanged(kPacked, 26, 'x'), 14); }));
  EXPECT_EQ("is damaged", refusalOf([] { unpackedGzip(withChanged(kPacked, 30, 'x'), 14); }));
  EXPECT_EQ("goes on behind its end", refusalOf([] { unpackedGzip(kPacked + 'x', 14); }));
}

}  // namespace
