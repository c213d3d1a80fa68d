// A settings file: tagged blocks of text, kept in memory as one text and edited by plain searching and cutting.
//
//   <RECENTFILES>
//   <FILE>C:\plans\house.txt</FILE>
//   </RECENTFILES>
//   <OPTIONS>
//   <WIDTH>640</WIDTH>
//   </OPTIONS>
//
// A block is "<NAME>", its content and "</NAME>", written with its name in upper case (base/letter_case.h). A group
// stands on lines of its own, which end in CR LF; it holds keys with their values, a key to a line. There are no
// attributes and no escapes, so a value may hold anything but its own closing tag. A group that is written moves to the
// end of the document. This is not XML, and nothing is parsed: every member searches, cuts and joins as it says.
//
// Searching. Positions count from 1. "Found ignoring case" means that the tags in the document may be in any case;
// every other search is exact. A block runs from its first opening tag to the first closing tag after it, so a block
// nested in one of the same name ends it.
//
// Damaged documents. A group whose closing tag is missing is a group all the same: that tag is taken to stand at
// position 0. A group at the very start of the document is then its opening tag alone. One further on would end before
// it starts; the members that cut it out, GetSetting, SaveSetting, ExtractBlock and UpdateRecent, raise 5 (invalid
// procedure call or argument) and save nothing, while InsertGroup repeats what lies between, so that nothing is lost.
// Everywhere else, a "<" without a ">" after it, a block without its closing tag and a key without one are passed over.
// Whatever the document and the arguments hold, a member takes time in proportion to them and to its result, times the
// logarithm at most. GetSetting and SaveSetting do not depend on the size of a document that looks as SaveSetting
// writes it, but for the first of them after another member or a file has changed the text. One object is used by one
// thread at a time, for reading too.
//
// Files are read and written through checksums/clsApi.h. Bytes that the document's editing does not touch come back as
// they were: line ends of either kind, a byte-order mark, every byte of a single-byte code page. Saving removes empty
// lines (those between two CR LF; bare line feeds end no line) and ends the file with one CR LF. A character put in
// that the ANSI code page lacks is saved as its best substitute, mostly "?".
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <tornby/base/ansi_code_page.h>
#include <tornby/base/event.h>
#include <tornby/base/ordered_collection.h>
#include <tornby/base/text.h>
#include <tornby/platform/code_page.h>
#include <tornby/platform/files.h>
#include <tornby/settings/ValueCollection.h>

namespace tornby {

class XML_Settings {
 public:
  /// A new document has no file name and no text.
  explicit XML_Settings(const AnsiCodePage& code_page = native_code_page(), const Files& files = native_files());
  XML_Settings(const XML_Settings& other);
  XML_Settings& operator=(const XML_Settings& other);
  /// What was moved from can be assigned to and destroyed, and no more.
  XML_Settings(XML_Settings&& other) noexcept;
  XML_Settings& operator=(XML_Settings&& other) noexcept;
  ~XML_Settings();

  /// The file. Writing it reads the whole file at once, in place of the earlier document; a file that is missing,
  /// empty or unreadable makes the document empty.
  /// A file that is there but could not be read (locked by another program, no permission, too large for the memory) is
  /// not lost to the next Save or UpdateRecent: before these write, it is given another name beside the new file, its
  /// own with ".unread~" added, or ".unread~2", ".unread~3" and so on where that is taken. Where even that is refused,
  /// nothing is saved.
  const String& FileName() const { return file_name_; }
  void FileName(StringView path);

  /// Removes the group's first block, found ignoring case, and then all empty lines of the document; then appends CR LF
  /// and the new block. Where `text` already holds the group's name, exactly as given and anywhere in it, the new block
  /// is `text` and CR LF; otherwise `text` on lines of its own between the group's tags.
  /// With no such group yet, only the appending happens, and leaves an empty line in the document in memory.
  void InsertGroup(StringView group, StringView text);

  /// Writes the document without its empty lines to the file, and CR LF behind it. The document in memory keeps them.
  /// A failure is not reported, and leaves the file as `clsApi::apiSaveFile` says.
  void Save();

  /// `text` without its empty lines: what stands between CR LFs and has at least one character, a blank for one, joined
  /// by CR LF, with none at either end.
  static String RemoveEmptyLines(StringView text);

  /// The contents of the group's child blocks in order, as they stand. Null when there is no such group (found ignoring
  /// case; children must have upper-case tags).
  /// Raises `ProgressMax` once, with the length of the group's block, then `ProgressCurrent` for each position looked
  /// at. The scan starts at the position that is one less than the length of the name. For names of three characters
  /// and more that is inside the group's own opening tag, and the children follow. For shorter names it is not past
  /// that tag's "<", so the only item is the whole content of the group; below position 1 nothing is looked at.
  /// After a child the scan leaves one character out, so one that follows without even a blank between is passed over.
  std::unique_ptr<StringCollection> ExtractBlock(StringView group);

  /// Every block of that name in the document, the name and its case exactly as given: what stands between its tags,
  /// or, with `whole`, the block and one character before and after it, less blanks at both ends. The next one is
  /// searched from inside the closing tag of the last.
  /// Raises 5 when `whole` and a block starts at position 1, where there is no character before it.
  StringCollection ExtractBlock2(StringView name, bool whole) const;

  /// The value of the key in the group; `default_value` when there is none. The group is found ignoring case, the key
  /// only where its tags are in upper case. Raises 5 for a group that cannot be cut out (see above).
  String GetSetting(StringView group, StringView key, StringView default_value) const;

  /// Puts `path` at the head of the recent files, the group "RECENTFILES", takes an exact duplicate out, and saves the
  /// file. The list has no limit. A path that holds the name "RECENTFILES" leaves the list without its tags, as
  /// `InsertGroup` says. Raises 5 as `ExtractBlock` does; nothing is saved then.
  /// When memory runs out the document is as before.
  void UpdateRecent(StringView path);

  /// The recent files, the newest first. One empty text when the group has none; nothing at all when there is no group
  /// or `ExtractBlock` raises an error.
  std::vector<String> ExtractRecent();

  /// Sets a key in a group, in memory only. A key that is there has every occurrence of its present value within its
  /// block, tags included, replaced by `value`, and that block, wherever it occurs in the group, replaced by the
  /// result: an empty present value therefore stays, and a value such as "I" changes the tags of WIDTH. Other keys
  /// follow on a line at the end of the group, and a missing group is made. The group moves to the end as `InsertGroup`
  /// says; one that is named in other than upper case is wrapped in its tags once more. Raises 5 for a group or key
  /// that cannot be cut out (see above).
  void SaveSetting(StringView group, StringView key, StringView value);

  /// A group's block made of `block` and one more key at its end. `block` loses the group's upper-case tags wherever
  /// they occur and gains the key's element; the result is that between the group's tags, without empty lines. The
  /// document plays no part.
  static String AddNewValue(StringView group, StringView key, StringView value, String& block);

  /// The blocks that follow one another in `text`, each as a pair of its name, in upper case, and what stands between
  /// its tags, which must be in upper case. A second block of a name is left out, and so is one that follows another
  /// without even a blank between.
  ValueCollection SplitBlock(StringView text) const;

  /// Every block of that name in `text`, with its tags, the name and its case exactly as given. Ends at an opening tag
  /// that is not closed.
  static StringCollection SuperSplit(StringView name, StringView text);

  /// What stands between the tags of the first block of that name, less one character at each end, which is half of
  /// each line break when they stand on lines of their own. Empty when there is no block or less than two characters.
  /// With `ignore_case` the tags may be in any case, and the result is in upper case.
  String GetBlock(StringView name, bool ignore_case) const;

  /// The same without the loss at the ends.
  String GetStructure(StringView name, bool ignore_case) const;

  void SetContents(StringView text) { change_to(String(text)); }
  const String& GetContents() const;

  /// The figure of the last `ProgressMax`, as its handler left it; 0 before the first `ExtractBlock` has ended.
  std::int32_t MaxElements() const { return max_elements_; }

  /// The opening tags of the top-level blocks, angle brackets included, each with itself as its key. A tag runs from a
  /// "<" to the next ">" and counts only where its closing tag, letter for letter, follows.
  /// Raises 457 (duplicate key) when two of them are the same but for their case.
  StringCollection FindNodes() const;

  /// What stands between the first occurrence of `tag`, angle brackets included and letter for letter, and its closing
  /// tag. Empty when `tag` does not occur or the result cannot be cut out. The closing tag of a tag that is never
  /// closed is taken to stand at position 0.
  String GetNodeValue(StringView tag) const;

  /// Raised by `ExtractBlock`, and so by `UpdateRecent` and `ExtractRecent`, before its scan. A change that the handler
  /// makes goes to `MaxElements`. A handler may use the document; an error that it raises ends the scan and passes to
  /// the caller.
  Event<std::int32_t&> ProgressMax;

  /// Raised at each step of the scan. A change that the handler makes is where the step goes on; the scan ends only
  /// past the end of the block, so a handler that keeps going back keeps it going.
  Event<std::int32_t&> ProgressCurrent;

 private:
  struct Block;
  struct Document;

  void change_to(String text);
  void insert(StringView group, const Block& present, StringView text);
  void put_first(StringView path);
  Block find_block(StringView name) const;
  Block find_block(StringView name, StringView text) const;
  String inner_text(StringView name, bool ignore_case, std::ptrdiff_t trim) const;

  const AnsiCodePage* code_page_;
  const Files* files_;
  String file_name_;
  bool unread_ = false;                 // the file holds what the document does not
  std::unique_ptr<Document> document_;  // its lists are brought up to date by reading, too
  std::int32_t max_elements_ = 0;
};

}  // namespace tornby
