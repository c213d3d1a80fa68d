#include "automation/controls/pages/page_draft.h"

#include <algorithm>

#include "automation/com/error_edge.h"

namespace tornby::automation {
namespace {

std::optional<std::wstring> shared(const std::vector<std::wstring>& values) {
  if (values.empty() || std::adjacent_find(values.begin(), values.end(), std::not_equal_to<>()) != values.end())
    return std::nullopt;
  return values.front();
}

}  // namespace

std::optional<std::wstring> PageField::shown() const {
  if (entered) return entered;
  return shared(reverting ? start : now);
}

PageDraft::PageDraft(std::span<IUnknown* const> objects) {
  for (IUnknown* object : objects) objects_.emplace_back(object);
  if (objects_.empty()) return;
  std::vector<PageProperty> common = objects_.front().properties();
  for (const EditedObject& object : objects_) {
    const auto others = object.properties();
    std::erase_if(common, [&](const PageProperty& property) {
      return std::none_of(others.begin(), others.end(), [&](const auto& other) { return property.is_same(other); });
    });
  }
  for (PageProperty& property : common) fields_.push_back({std::move(property), {}, {}, std::nullopt, false});
  refresh();
  for (PageField& field : fields_) field.start = field.now;
}

std::size_t PageDraft::find(DISPID property) const {
  const auto found =
      std::find_if(fields_.begin(), fields_.end(), [&](const auto& field) { return field.property.id == property; });
  return static_cast<std::size_t>(found - fields_.begin());
}

bool PageDraft::is_dirty() const {
  return std::any_of(fields_.begin(), fields_.end(), [](const auto& field) { return field.is_edited(); });
}

bool PageDraft::can_revert() const {
  return std::any_of(fields_.begin(), fields_.end(),
                     [](const auto& field) { return field.entered || (field.start != field.now && !field.reverting); });
}

void PageDraft::enter(std::size_t index, std::wstring value) {
  PageField& field = fields_[index];
  const auto usual = shared(field.now);
  const bool is_change = usual ? value != *usual : !value.empty();
  field.entered = is_change ? std::optional(std::move(value)) : std::nullopt;
  field.reverting = false;
}

void PageDraft::revert() {
  for (PageField& field : fields_) {
    field.entered.reset();
    field.reverting = field.start != field.now;
  }
}

void PageDraft::refresh() {
  for (PageField& field : fields_) {
    std::vector<std::wstring> now;
    for (const EditedObject& object : objects_) now.push_back(object.read(field.property));
    field.now = std::move(now);
  }
}

std::vector<PageDraft::Write> PageDraft::planned_writes() const {
  std::vector<Write> writes;
  for (std::size_t f = 0; f < fields_.size(); ++f) {
    const PageField& field = fields_[f];
    if (!field.is_edited()) continue;
    for (std::size_t object = 0; object < objects_.size(); ++object) {
      const std::wstring& value = field.entered ? *field.entered : field.start[object];
      if (value != field.now[object]) writes.push_back({f, object, value, field.now[object]});
    }
  }
  return writes;
}

void PageDraft::take_back(std::span<const Write> done) noexcept {
  for (std::size_t i = done.size(); i-- > 0;) {
    try {
      objects_[done[i].object].write(fields_[done[i].field].property, done[i].before);
    } catch (...) {
      // It took this value before; what it says now is not what the user has to hear of.
    }
  }
}

std::optional<PageDraft::Refusal> PageDraft::apply() {
  std::vector<Write> writes = planned_writes();
  std::size_t current = 0, begun = 0;
  try {
    for (; current < writes.size(); ++current)
      OwnedVariant(parse_value(fields_[writes[current].field].property, writes[current].value));
    for (current = 0; current < writes.size(); ++current) {
      begun = current + 1;
      objects_[writes[current].object].write(fields_[writes[current].field].property, writes[current].value);
    }
  } catch (const RefusedValue& refused) {
    take_back(std::span(writes).first(begun));
    return Refusal{writes[current].field, refused.result(), refused.reason()};
  } catch (...) {
    take_back(std::span(writes).first(begun));
    throw;
  }
  for (Write& write : writes) fields_[write.field].now[write.object].swap(write.value);
  for (PageField& field : fields_) {
    field.entered.reset();
    field.reverting = false;
  }
  if (!writes.empty())
    for (const EditedObject& object : objects_) object.lay_out();
  try {
    refresh();  // an object may make something else of a value
  } catch (...) {
    // All is written.
  }
  return std::nullopt;
}

}  // namespace tornby::automation
