// The editor of extended items: values that move with the type, and what its buttons refuse.
#include "extitems/item_editor.h"

#include <gtest/gtest.h>

#include <tuple>

#include "support/fake_host.h"

namespace extitems {
namespace {

using platform::Answer;

class ItemEditor : public testing::Test {
 protected:
  testing_support::FakeHost host;
};

TEST_F(ItemEditor, AValueMovesWithItsType) {
  const std::tuple<ItemType, const char16_t*, ItemType, CItemEditor::Fields> rows[] = {
      {kInt, u"a b", kFile, {u"", kFile, u"a b", u"", u""}},
      {kString, u"a b", kTime, {u"", kTime, u"a b", u"a b", u""}},
      {kString, u"a b c", kDateTime, {u"", kDateTime, u"a", u"b c", u""}},
      {kString, u"ab ", kDateTime, {u"", kDateTime, u"ab ", u"", u""}},
      {kDate, u"ab", kMultiLineString, {u"", kMultiLineString, u"ab", u"", u"ab"}},
      {kTime, u"1:2", kFloat, {u"", kFloat, u"1:2", u"1:2", u""}},
      {kTime, u"d 1:2", kDateTime, {u"", kDateTime, u"d", u"1:2", u""}},
      {kTime, u"1:2", kDateTime, {u"", kDateTime, u"", u"1:2", u""}},
      {kDateTime, u"d t", kString, {u"", kString, u"d t", u"t", u""}},
      {kDateTime, u"d t", kTime, {u"", kTime, u"d", u"d t", u""}},
      {kMultiLineString, u"a\nb c", kString, {u"", kString, u"ab c", u"", u"a\nb c"}},
      {kMultiLineString, u"a\nb c", kDateTime, {u"", kDateTime, u"ab", u"c", u"a\nb c"}},
  };
  for (const auto& [from, value, to, moved] : rows) {
    SCOPED_TRACE(testing::Message() << from << " to " << to);
    CItemEditor editor(u"");
    editor.ChangeType(kMultiLineString);
    editor.ChangeType(from);
    (from == kTime              ? editor.fields.time
     : from == kMultiLineString ? editor.fields.lines
                                : editor.fields.line) = value;
    if (from == kDateTime) std::tie(editor.fields.line, editor.fields.time) = std::pair(u"d", u"t");
    editor.ChangeType(to);
    EXPECT_EQ(editor.fields.line, moved.line);
    EXPECT_EQ(editor.fields.time, moved.time);
    EXPECT_EQ(editor.fields.lines, moved.lines);
  }
}

TEST_F(ItemEditor, CreatesChecksAndWarns) {
  const std::tuple<const char16_t*, ItemType, const char16_t*, const char*> rows[] = {
      {u"", kInt, u"1", "名前が入力されていません。"},
      {u"n", kFloat, u"1e5", "値(float)の3文字目あたりに"},
      {u"人数", kInt, u"1", "名前の1文字目あたりに"},
      {u"have", kInt, u"1", "すでに同じ名前の項目が登録されています。"},
      {u"n", kString, u"caf\u00E9", "値の4文字目は、保存した後に読み戻せない文字です。"},
  };
  for (const auto& [name, type, value, message] : rows) {
    SCOPED_TRACE(message);
    CItemEditor editor(u"have:have:int:1:");
    editor.fields = {name, type, value, u"", u""};
    host.answers = {{message, type == kString ? Answer::kNo : Answer::kOk}};
    editor.OnBtnCreate();
    EXPECT_EQ(editor.Items().size(), 1u);
  }
  CItemEditor editor(u"");
  editor.fields = {u"b", kString, u"\u00E9\t", u"", u""};
  host.answers = {Answer::kYes};
  editor.OnBtnCreate();
  editor.fields = {u"a", kMultiLineString, u"", u"", u"x\ny"};
  editor.OnBtnCreate();
  EXPECT_EQ(editor.Selected(), 0);
  EXPECT_EQ(editor.Items()[0], (ExtItem{u"a", u"a", u"mlstring", u"x\ny"}));
}

TEST_F(ItemEditor, ChangesAndDeletes) {
  CItemEditor editor(u"a:a:int:1:b:b:int:2:c:c:int:3:");
  host.answers = {"項目が指定されていません。"};
  editor.OnBtnChange();
  editor.Select(0);
  editor.fields.name = u"b";
  host.answers = {Answer::kNo};
  editor.OnBtnChange();
  EXPECT_EQ(editor.Items().size(), 3u);
  host.answers = {Answer::kYes};
  editor.OnBtnChange();
  EXPECT_EQ(editor.Selected(), 1);
  EXPECT_EQ(editor.Items()[1].value, u"1");
  EXPECT_EQ(editor.Items()[0].name, u"a") << "the former one stays";
  editor.fields.name = u"z";
  editor.fields.line = u"−１";
  editor.OnBtnChange();
  EXPECT_EQ(editor.Selected(), 2);
  EXPECT_EQ(editor.Items()[2].value, u"-1") << "typed in full-width forms";
  host.answers = {{"項目\"z\"を削除してもよろしいですか？", Answer::kYes}};
  editor.OnBtnDelete();
  EXPECT_EQ(host.messages.back().defaultButton, 1);
  EXPECT_EQ(editor.Selected(), 1);
  EXPECT_EQ(editor.fields.name, u"c");
  editor.OnBtnApply();
  EXPECT_EQ(editor.result, u"a:a:int:1:c:c:int:3:");
}

TEST_F(ItemEditor, ATextTooLongStays) {
  for (const size_t length : {2000u, 2001u}) {
    SCOPED_TRACE(length);
    CItemEditor editor(u"");
    editor.fields = {u"n", kString, std::u16string(length - 14, u'x'), u"", u""};
    editor.OnBtnCreate();
    if (length > 2000) host.answers = {"拡張項目の入力長さ(2001)が最大長さ(2000)を"};
    editor.OnBtnApply();
    EXPECT_EQ(editor.result.has_value(), length == 2000);
  }
}

}  // namespace
}  // namespace extitems
