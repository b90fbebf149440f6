// Expressions, factors and functions by themselves: their values, their codes and where they leave
// the cursor.
#include "actiontext/expressions.h"

#include <gtest/gtest.h>

#include <string>

#include "actiontext/number_text.h"
#include "platform/utf.h"
#include "support/fake_host.h"

namespace {

using namespace actiontext;
using namespace std::string_view_literals;

// "7" for an int, "1.5f" for a float, "'a'" for a string, the name of an identifier, "op" for an
// operator or a mark, "" for an empty stack.
std::u16string Shown(ValueStack& stack) {
  ActionValue top;
  if (stack.Pop(top) != 0) return u"";
  switch (top.type) {
    case kInt:
      return std::u16string(NumberText(top.i).View());
    case kFloat:
      return std::u16string(NumberText(top.f, NumberText::Form::kSixDigits).View()) + u"f";
    case kString:
      return u"'" + std::u16string(top.s) + u"'";
    case kIdentifier:
      return std::u16string(top.s);
    default:
      return u"op";
  }
}

constexpr size_t kOnTheLast = std::u16string_view::npos;

struct Row {
  std::u16string_view text;
  std::u16string_view top;
  const char* why = "";
  int code = 0;
  size_t cursor = kOnTheLast;
};

template <size_t kRows>
void ExpectRows(int (*evaluate)(ActionTextContext&, std::u16string_view, size_t&),
                const Row (&rows)[kRows]) {
  for (const Row& row : rows) {
    SCOPED_TRACE(platform::ToUtf8(row.text) + "  " + row.why);
    store::Action action;
    action[store::kExtItems] = u"N:n:int:5:";
    ActionTextRun run(action);
    ActionTextContext context(run);
    size_t cursor = 0;
    EXPECT_EQ(evaluate(context, row.text, cursor), row.code);
    EXPECT_EQ(Shown(context.stack), row.top);
    EXPECT_EQ(cursor, row.cursor == kOnTheLast ? row.text.size() - 1 : row.cursor);
  }
}

TEST(Expressions, BindAndConvert) {
  const Row plain[] = {
      {u"100 / 10 / 5;", u"2"},   {u"2 >= 2;", u"-1"},       {u"2 != 2;", u"0"},
      {u"3 <= 2;", u"0"},         {u"3 > 2;", u"-1"},        {u"0 - 7 / 2;", u"-3"},
      {u"3 * 1.5;", u"4"},        {u"1.5 * \"2\";", u"3f"},  {u"2 * \"3\";", u"6"},
      {u"1 + 2.9;", u"3"},        {u"1 - 2.9;", u"-1"},      {u"1.5 - \"1e0\";", u"0.5f"},
      {u"\"a\" + -1;", u"'a-1'"}, {u"\"\" == 10;", u"-1"},   {u"\"abc\" == 0;", u"0"},
      {u"0 == \"abc\";", u"-1"},  {u"1.5 < 2;", u"-1"},      {u"1.5 == \"1.5\";", u"-1"},
      {u"\"a\" < \"b\";", u"-1"}, {u"65536 * 65536;", u"0"},
  };
  ExpectRows(EvalExpr, plain);
  const Row odd[] = {
      {u"1.0 / 0;", u"'(can't 0 div.)'"},
      {u"1 / 0.0;", u"'(can't 0 div.)'"},
      {u"\"a\" + \"\" + \"b\";", u"'ab'"},
      {u"(0 - 2147483647 - 1) / -1;", u"-2147483648"},
      {u"1 == 1 == 1;", u"0", "-1 and 1"},
      {u"2 * \" 3x\";", u"6", "as far as it reads"},
      {u"\"a\" / 0;", u"'(mul/div can't in string.)'", "whatever stands right"},
      {u"1 / 0.5;", u"2", "0.5 is no zero"},
      {u"1/0 + 1;", u"'(can't 0 div.)1'", "the message goes on as a string"},
      {u"1 == 1.9;", u"-1", "truncated"},
      {u"\"Ｚ\" < \"会\";", u"0", "by code unit"},
      {u"2147483647 + 1;", u"-2147483648", "wraps"},
      {u"4294967298 * 1;", u"2", "in a literal too"},
      {u"0 + 99999999999.0;", u"2147483647", "clamped"},
      {u"0 - 1e9;", u"-1", "no exponent in code", 0, 5},
  };
  ExpectRows(EvalExpr, odd);
}

TEST(Expressions, AssignAndLookUp) {
  const Row rows[] = {
      {u"N = N + 1;", u"6", "a variable hides an item from then on"},
      {u"(a) = 5;", u"5", "a name in parentheses stays a name"},
      {u"a == 5;", u"0", "an unknown name"},
      {u"5 = a;", u"a", "no name on the left: everything stays"},
      {u"a + 1;", u"", "takes the operands off"},
      {u"N;", u"N", "looked up only where a value is needed"},
      {u"-(N + 0);", u"-5"},
      {u"場所 = 2;", u"2", "a name in kanji"},
      {u"場所め = 2;", u"場所", "hiragana end a name", 0, 2},
      {u"_1ヾ = 2;", u"2", "from U+30FE on"},
      {u"n == 5;", u"0", "case matters"},
  };
  ExpectRows(EvalExpr, rows);
}

TEST(Expressions, LeaveWhatFailed) {
  const Row rows[] = {
      {u"1 - +* 2;", u"1", "a left-over operator as operand takes three items off"},
      {u"1 + (+);", u"", "and a mark on the right, after a sign that hides its failure"},
      {u"-3 + 1;", u"-2"},
      {u"1 +;", u"op", "no operand", -101},
      {u"1 + 2", u"op", "the 2 touches the end", -101, 5},
      {u"1 = = 2;", u"op", "no operand", -101, 4},
      {u"1 =< 2;", u"op", "no such operator", -101, 3},
      {u"1 ! 2;", u"1", "the expression ends there", 0, 2},
      {u"1\n+ 2;", u"1", "a line break is no blank", 0, 1},
  };
  ExpectRows(EvalExpr, rows);
}

TEST(Factors, ReadLiterals) {
  const Row rows[] = {
      {u"1.;", u"1f"},
      {u".5;", u"", "no leading point", -101, 0},
      {u"1.2.3;", u"", "a second point", -10011, 3},
      {u"12", u"", "the number touches the end", -201, 2},
      {u"め;", u"", "hiragana begin no name", -101, 0},
      {u"  め;", u"", "the cursor stands on what was refused", -101, 2},
      {u"\"a\\tb\";", u"'a\tb'"},
      {u"\"\\n\\r\\\\\\\"\\'\";", u"'\n\r\\\"''"},
      {u"\"\\x3042b\";", u"'あb'", "four digits at most"},
      {u"\"\\x41\\n\";", u"'A\n'", "an escape ends the digits"},
      {u"\"a\tb\";", u"", "a raw tab", -301, 2},
      {u"\"\\q\";", u"", "an unknown escape", -10011, 2},
      {u"\"a", u"", "ends in a string", -301, 2},
      {u"\"a\\", u"", "ends in an escape", -311, 3},
      {u"-;", u"", "hides the failure"},
      {u"(1;", u"1", "no closing one", -711},
  };
  ExpectRows(EvalFact, rows);
}

TEST(NumberText, ReadsAsTheCLocaleDoes) {
  const std::tuple<std::u16string_view, int32_t, std::u16string_view> rows[] = {
      {u"", 0, u"0"},
      {u" \t\r\n+12.5e1x", 12, u"125"},
      {u"--5", 0, u"0"},
      {u"0x10", 0, u"0"},
      {u"inf", 0, u"0"},
      {u"1e", 1, u"1"},
      {u"1e400", 1, u"inf"},
      {u"-1e99999999999999999999", -1, u"-inf"},
      {u"1e-400", 1, u"0"},
      {u"0.0000001e316", 0, u"inf"},
      {u"4294967295", -1, u"4.29497e+09"},
  };
  for (const auto& [text, asInt, asFloat] : rows) {
    SCOPED_TRACE(platform::ToUtf8(text));
    EXPECT_EQ(ReadInt(text), asInt);
    EXPECT_EQ(NumberText(ReadFloat(text), NumberText::Form::kSixDigits).View(), asFloat);
  }
  EXPECT_EQ(ReadFloat(u"0." + std::u16string(400, u'0') + u"25e400"), 0.25);
}

TEST(Functions, TakeFactorsAndAnswer) {
  const Row rows[] = {
      {u"Length(\"abc\");", u"3"},
      {u"Length ( \"abc\" , ) ;", u"3", "blanks, and a comma after the last", 0, 18},
      {u"Length(123);", u""},
      {u"Length(x);", u"", "an unknown name"},
      {u"Length(\"a\", \"b\");", u"", "too many are taken off"},
      {u"Length;", u"", "a function is no name", -601, 6},
      {u"length(\"a\");", u"length", "case matters", 0, 6},
      {u"Substring(\"abcdef\", 2);", u"'cdef'"},
      {u"Substring(\"abcdef\", 2, 0);", u"''"},
      {u"Substring(\"abcdef\", 4, 9);", u"'ef'"},
      {u"Substring(\"abcdef\", 4, -1);", u"'ef'"},
      {u"Substring(\"abc\", 3);", u""},
      {u"Substring(\"abc\", -1);", u""},
      {u"Substring(\"abc\", \"1\");", u"", "a position isn't converted"},
      {u"Substring(\"abc\", 1, -Length(1));", u"", "a missing argument shifts the others"},
      {u"IndexOf(\"abc\", \"z\");", u"-1"},
      {u"IndexOf(\"abc\", \"\");", u"-1"},
      {u"IndexOf(\"ababac\", \"abac\");", u"2", "a beginning that repeats"},
      {u"IndexOf(\"abc\", \"c\", 3);", u"-1"},
      {u"IndexOf(\"abc\", \"a\", 4);", u"-1", "beyond the end"},
      {u"IndexOf(\"abc\", \"a\", -1);", u"-1", "before the beginning"},
      {u"IndexOf(\"abc\", 1);", u""},
      {u"Rand(1.5);", u""},
  };
  ExpectRows(EvalFact, rows);
  const Row sums[] = {
      {u"1 + Length(1);", u"op", "the sum waits for ever"},
      {u"1 + Length(Length(1));", u"1", "the outer call takes the + for its argument"},
  };
  ExpectRows(EvalExpr, sums);
}

}  // namespace
