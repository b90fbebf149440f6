// The codes of statements and blocks, and the character they stop on.
#include "actiontext/statements.h"

#include <gtest/gtest.h>

#include "platform/utf.h"

namespace {

using namespace actiontext;

struct Row {
  std::u16string_view text;
  int code;
  size_t cursor;
  const char* why;
};

template <typename Evaluate, size_t kRows>
void ExpectStops(Evaluate evaluate, const Row (&rows)[kRows]) {
  for (const Row& row : rows) {
    SCOPED_TRACE(platform::ToUtf8(row.text) + "  " + row.why);
    const store::Action action;
    ActionTextRun run(action);
    ActionTextContext context(run);
    size_t cursor = 0;
    EXPECT_EQ(evaluate(context, row.text, cursor), row.code);
    EXPECT_EQ(cursor, row.cursor);
  }
}

TEST(Statements, Stop) {
  const Row rows[] = {
      {u"", -101, 0, "nothing"},
      {u" x", -101, 0, "no if: unmoved"},
      {u"if", -201, 2, "ends behind the word"},
      {u"if x", -201, 3, "no parenthesis"},
      {u"if ( ", -2111, 5, "ends before the condition"},
      {u"if ()", -211, 4, "no condition"},
      {u"if (1", -211, 5, "it touches the end"},
      {u"if (1;", -221, 5, "not closed"},
      {u"if (1) ", -231, 7, "ends before the block"},
      {u"if (1) x", -231, 7, "no block"},
      {u"if (0) {", -231, 8, "the block that is passed over isn't closed"},
      {u"if (1) {} ", 0, 10, "a clean end"},
      {u"if (1) {}x", 0, 9, "stops on what follows"},
      {u"if (0) {}else x", 0, 14, "a failed else is none of the statement"},
      {u"if (0) {}else if x", -201, 17, "but its if is one"},
  };
  ExpectStops(EvalStatement, rows);
}

TEST(Statements, StopInBlocks) {
  const Row blocks[] = {
      {u" ", -101, 1, "nothing"},
      {u"x", -101, 0, "no brace"},
      {u"{", -201, 1, "ends in the block"},
      {u"{1;}x", 0, 4, "behind the brace"},
      {u"{1 2 ; 3}x", 0, 9, "values need no semicolon between them"},
      {u"{$}", -201, 1, "neither statement nor expression"},
  };
  ExpectStops(EvalStatExprBlock, blocks);
  const auto passOver = [](ActionTextContext&, std::u16string_view text, size_t& cursor) {
    return SkipToRightPrnt(text, cursor);
  };
  const Row skipped[] = {
      {u"{}x", 0, 2, "closed"},
      {u"x}x", 0, 2, "the first one, without an opening one"},
      {u"{\"}\\\"}\"}x", 0, 8, "in strings they count for nothing"},
      {u"{{}", -101, 3, "not closed"},
      {u"{\"}", -201, 3, "ends in a string"},
      {u"{\"\\", -201, 3, "ends in an escape"},
  };
  ExpectStops(passOver, skipped);
}

TEST(Statements, EmbeddedBlockAppendsOnlyWhereItEndsWell) {
  const struct {
    std::u16string_view text;
    std::u16string_view out;
    int code;
    size_t cursor;
  } rows[] = {
      {u"1#", u"=1", 0, 1},        {u"1 +#", u"=", -1000, 3}, {u"1 2#", u"=1", 0, 2},
      {u" #", u"=", 0, 1},         {u"x#", u"=", 0, 1},       {u"1;  ", u"=", 0, 4},
      {u"if(1){2} ", u"=2", 0, 9},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(platform::ToUtf8(row.text));
    const store::Action action;
    ActionTextRun run(action);
    std::u16string out = u"=";
    size_t cursor = 0;
    EXPECT_EQ(EvalEmbeddedBlock(run, out, row.text, cursor), row.code);
    EXPECT_EQ(out, row.out);
    EXPECT_EQ(cursor, row.cursor);
  }
}

}  // namespace
