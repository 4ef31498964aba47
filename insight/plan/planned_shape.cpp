#include "plan/planned_shape.h"

#include <algorithm>

#include "plan/room.h"
#include "text.h"
#include "view/object_path.h"

namespace insight {

namespace {

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20U;
constexpr std::size_t kMostDigits = 13;  // beyond which no library goes

std::optional<std::uint64_t> mebibytesIn(const std::wstring& text) {
  const bool isNumber =
      !text.empty() && text.size() <= kMostDigits &&
      std::all_of(text.begin(), text.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
  if (!isNumber) return {};
  return std::stoull(text);
}

/// One object on its way from what it is to what it becomes.
class Shaping {
 public:
  Shaping(const TellsShape& becomes, const RequestArguments& request, const MachineView& machine)
      : m_becomes(becomes), m_request(request), m_machine(machine) {}

  void shapeVolume(const VolumeView* volume, PlannedObject& planned) {
    takeArray(volume != nullptr ? volume->arrayId : m_request.valueOf(m_becomes.array));
    m_level = m_request.valueOf(m_becomes.level);
    planned.level = m_level;
    if (m_level.empty() && volume != nullptr) m_level = volume->level;
    planned.members = members(volume == nullptr);
    planned.aboutBytes = volumeBytes(volume);
  }

  void shapeArray(const std::wstring& id, PlannedObject& planned) {
    takeArray(id);
    planned.members = members(id.empty());
    if (planned.members.empty()) return;
    const std::uint64_t member =
        m_array == nullptr ? memberBytesOf(m_machine, m_more) : memberBytesOf(m_machine, *m_array, m_more);
    planned.aboutBytes = member * planned.members.size();
  }

 private:
  void takeArray(const std::wstring& id) {
    m_array = m_machine.array(id);
    m_more = m_request.valuesOf(m_becomes.disks);
  }

  /// Those of the array and the further ones, where they are others than before.
  std::vector<ObjectRef> members(bool isNew) const {
    std::vector<ObjectRef> all;
    if (!isNew && m_more.empty()) return all;
    if (m_array != nullptr) {
      for (const DiskView* const disk : m_machine.membersOf(m_array->id)) all.push_back(refOf(*disk));
    }
    for (const std::wstring& id : m_more) {
      if (const DiskView* const disk = m_machine.disk(id)) all.push_back(refOf(*disk));
    }
    return all;
  }

  std::size_t diskCount() const {
    return m_more.size() + (m_array == nullptr ? 0 : static_cast<std::size_t>(m_array->diskCount));
  }

  /// Nothing where the size stays, or nothing is known of it.
  std::optional<std::uint64_t> volumeBytes(const VolumeView* volume) const {
    const auto wanted = mebibytesIn(m_request.valueOf(m_becomes.size));
    if (wanted && *wanted > 0) return *wanted * kMebibyte;
    if (!wanted && !m_becomes.fillsArray) return {};
    const auto data = dataDisksOf(m_level, diskCount());
    if (!data) return {};
    return *data * roomOnMember(volume);
  }

  /// What the volume can take of each disk.
  std::uint64_t roomOnMember(const VolumeView* volume) const {
    if (m_array == nullptr) return memberBytesOf(m_machine, m_more);
    if (m_becomes.fillsArray) return memberBytesOf(m_machine, *m_array, m_more);
    const std::uint64_t own = volume == nullptr ? 0 : shareOf(*volume).value_or(0);
    return own + freeOfMember(*m_array);
  }

  const TellsShape& m_becomes;
  const RequestArguments& m_request;
  const MachineView& m_machine;
  const ArrayView* m_array = nullptr;  // null: a new one
  std::vector<std::wstring> m_more;    // disks that join
  std::wstring m_level;
};

/// A new one has the name that is given, which its argument holds unless that names other objects. What has
/// no other name goes by its id.
ObjectRef objectOf(const OperationEffect& effect, const std::wstring& id, const RequestArguments& request,
                   const MachineView& machine) {
  if (const auto object = objectNamed(machine, effect.type, id)) return *object;
  ObjectRef object{wideToUtf8(effect.type), id, id};
  if (id.empty() && effect.relation == L"itself") object.name = request.valueOf(effect.argument);
  return object;
}

}  // namespace

PlannedObject shapeOf(const OperationEffect& effect, const std::wstring& id, const RequestArguments& request,
                      const MachineView& machine) {
  PlannedObject planned;
  planned.object = objectOf(effect, id, request, machine);
  Shaping shaping(effect.becomes, request, machine);
  if (effect.type == L"volume") shaping.shapeVolume(machine.volume(id), planned);
  if (effect.type == L"array") shaping.shapeArray(id, planned);
  return planned;
}

}  // namespace insight
