#include "published_fields.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "common/open_objects.h"
#include "field_comparison.h"
#include "support/lines_of.h"

namespace {

using ovra::data_transfer::ServiceObject;
using Lines = std::vector<std::string>;

/// An answer that is no object of the model.
struct Answer {
  std::wstring volumeId;
  std::optional<VolumeState> state;
  std::wstring diskId;
  std::vector<std::wstring> disks;

  template <class Walk>
  static constexpr void fields(Walk& walk) {
    walk(field::text<&Answer::volumeId>(L"volumeId", L"The volume."));
    walk(field::word<&Answer::state>(L"state", L"Its state, where that has changed."));
    walk(field::textOrNull<&Answer::diskId>(L"diskId", L"The disk, if any."));
    walk(field::links<&Answer::disks>(L"disks", L"disk", L"All disks."));
  }
};

TEST(PublishedAnswer, HasAnOptionalMemberWhileThereIsAValue) {
  EXPECT_EQ(linesOf(field::formOf<Answer>(Answer{L"1", VolumeState::NORMAL, L"2", {L"3"}})),
            (Lines{"diskId = \"2\"", "disks[0] = \"3\"", "state = \"NORMAL\"", "volumeId = \"1\""}));
  EXPECT_EQ(linesOf(field::formOf<Answer>(Answer{})),
            (Lines{"diskId = null", "disks = []", "volumeId = \"\""}));
}

TEST(PublishedAnswer, RequiresNoOptionalMember) {
  EXPECT_EQ(linesOf(field::schemaOf<Answer>().member(L"required")),
            (Lines{"[0] = \"volumeId\"", "[1] = \"diskId\"", "[2] = \"disks\""}));
}

TEST(PublishedAnswer, DiffersWhereAnOptionalMemberComesOrChanges) {
  const auto same = [](std::optional<VolumeState> one, std::optional<VolumeState> other) {
    return field::sameFields<Answer>(Answer{L"1", one, L"", {}}, Answer{L"1", other, L"", {}},
                                     field::Progress::COUNTS);
  };
  EXPECT_TRUE(same({}, {}));
  EXPECT_TRUE(same(VolumeState::NORMAL, VolumeState::NORMAL));
  EXPECT_FALSE(same({}, VolumeState::NORMAL));
  EXPECT_FALSE(same(VolumeState::FAILED, VolumeState::NORMAL));
}

/// Says where a value is not as its schema tells.
class Conformity {
 public:
  static Lines faultsOf(const ServiceObject& value, const ServiceObject& schema) {
    Conformity conformity;
    conformity.judge("", value, schema);
    return conformity.m_faults;
  }

 private:
  void judge(const std::string& path, const ServiceObject& value, const ServiceObject& schema) {
    if (!allows(schema.member(L"type"), typeOf(value))) {
      m_faults.push_back(path + " is of type " + wideToUtf8(typeOf(value)));
    } else if (value.isObject()) {
      judgeMembers(path, value, schema);
    } else if (value.isArray()) {
      for (auto each = value.begin(); each != value.end(); ++each)
        judge(path + "[]", *(*each).value, schema.member(L"items"));
    } else if (schema.hasKey(L"enum") && !contains(schema.member(L"enum"), value.toString())) {
      m_faults.push_back(path + " has a word of its own");
    }
  }

  void judgeMembers(const std::string& path, const ServiceObject& value, const ServiceObject& schema) {
    if (schema.hasKey(L"additionalProperties")) {
      for (const auto& member : value.asObject())
        judge(path + "." + wideToUtf8(member.first), *member.second, schema.member(L"additionalProperties"));
      return;
    }
    const ServiceObject& properties = schema.member(L"properties");
    for (const auto& member : value.asObject()) {
      const std::string name = path + "." + wideToUtf8(member.first);
      if (properties.hasKey(member.first)) {
        judge(name, *member.second, properties.member(member.first));
      } else {
        m_faults.push_back(name + " is not in the schema");
      }
    }
    const ServiceObject& required = schema.member(L"required");
    for (auto key = required.begin(); key != required.end(); ++key) {
      const std::wstring name = (*key).value->toString();
      if (!value.hasKey(name)) m_faults.push_back(path + "." + wideToUtf8(name) + " is missing");
    }
  }

  static std::wstring typeOf(const ServiceObject& value) {
    static const std::vector<std::wstring> types = {L"null",   L"boolean", L"integer", L"integer",
                                                    L"number", L"string",  L"object",  L"array"};
    return types.at(static_cast<std::size_t>(value.which()));
  }

  static bool allows(const ServiceObject& type, const std::wstring& actual) {
    return type.isArray() ? contains(type, actual) : type.toString() == actual;
  }

  static bool contains(const ServiceObject& list, const std::wstring& text) {
    for (auto each = list.begin(); each != list.end(); ++each) {
      if ((*each).value->toString() == text) return true;
    }
    return false;
  }

  Lines m_faults;
};

template <class Model>
class ModelSchema : public testing::Test {};

using Models = testing::Types<Array, Controller, EndDevice, Port, Raid, RaidLevelSupport, Version, Volume>;
TYPED_TEST_SUITE(ModelSchema, Models);

TYPED_TEST(ModelSchema, FitsTheForms) {
  EXPECT_EQ(Conformity::faultsOf(complete<TypeParam>().build().toServiceObject(), TypeParam::schema()),
            Lines{});
  EXPECT_EQ(Conformity::faultsOf(openObject<TypeParam>().toServiceObject(), TypeParam::schema()), Lines{});
}

/// Every one but `defaultStripSize`, which is there instead of another one.
TYPED_TEST(ModelSchema, TellsNoKeyThatNeverComes) {
  ServiceObject form = openObject<TypeParam>().toServiceObject();
  const ServiceObject other = complete<TypeParam>().build().toServiceObject();
  const ServiceObject schema = TypeParam::schema();
  for (const auto& property : schema.member(L"properties").asObject()) {
    EXPECT_TRUE(form.hasKey(property.first) || other.hasKey(property.first)) << wideToUtf8(property.first);
  }
}

TYPED_TEST(ModelSchema, DescribesEveryKeyInASentence) {
  const ServiceObject schema = TypeParam::schema();
  for (const auto& property : schema.member(L"properties").asObject()) {
    const std::wstring sentence = property.second->member(L"description").toString();
    ASSERT_FALSE(sentence.empty()) << wideToUtf8(property.first);
    EXPECT_EQ(sentence.back(), L'.') << wideToUtf8(property.first);
  }
}

TEST(Conformity, SeesWhatDoesNotFit) {
  ServiceObject form = complete<Volume>().build().toServiceObject();
  form.member(L"name") = true;
  form.member(L"state") = std::wstring(L"FINE");
  form.member(L"more") = true;
  ServiceObject bare = ServiceObject::object();
  EXPECT_EQ(
      Conformity::faultsOf(form, Volume::schema()),
      (Lines{".more is not in the schema", ".name is of type boolean", ".state has a word of its own"}));
  EXPECT_EQ(Conformity::faultsOf(bare, Volume::schema()).size(), 17U);
}

}  // namespace
