// What stands in the page's fields: the values of the objects, and what the user has entered in their place.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "automation/controls/pages/edited_object.h"

namespace tornby::automation {

struct PageField {
  PageProperty property;
  std::vector<std::wstring> start;      // each object's value when the page got the object
  std::vector<std::wstring> now;        // each object's value
  std::optional<std::wstring> entered;  // by the user, and not yet applied
  bool reverting = false;               // to the start, when it is applied

  bool is_edited() const { return entered || reverting; }
  /// What to show; nothing when the objects differ.
  std::optional<std::wstring> shown() const;
};

class PageDraft {
 public:
  /// A field's value that cannot be applied.
  struct Refusal {
    std::size_t field;
    HRESULT result;
    std::wstring reason;
  };

  PageDraft() = default;
  /// A field for each property that all the objects have.
  explicit PageDraft(std::span<IUnknown* const> objects);

  const std::vector<PageField>& fields() const { return fields_; }
  std::span<EditedObject> objects() { return objects_; }
  /// The field of a property of the first object; the number of fields when there is none.
  std::size_t find(DISPID property) const;

  bool is_dirty() const;
  bool can_revert() const;

  /// Takes what the user has entered. It is no change when it is what the objects have, or when the field shows nothing
  /// because they differ and nothing stands in it.
  void enter(std::size_t field, std::wstring value);
  /// Puts every field back to what the objects had at the start.
  void revert();
  /// Reads the objects again; what was entered stays.
  void refresh();
  /// Writes what was entered, all of it or nothing.
  std::optional<Refusal> apply();

 private:
  struct Write {
    std::size_t field, object;
    std::wstring value, before;
  };

  std::vector<Write> planned_writes() const;
  void take_back(std::span<const Write> done) noexcept;

  std::vector<EditedObject> objects_;
  std::vector<PageField> fields_;
};

}  // namespace tornby::automation
