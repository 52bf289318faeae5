#include "base/ini_document.h"

#include <gtest/gtest.h>

namespace quorvex {
namespace {

std::string Found(const IniDocument& document, std::string_view section, std::string_view key) {
  return std::string(document.Find(section, key).value_or("<none>"));
}

TEST(IniDocument, FindsValuesAsThePlatformDoes) {
  const IniDocument document(
      "top=1\r\n"
      "[ A ]\r\n"
      "  Key = one two \t\r\n"
      "key=second\r\n"
      "double=\"x \"\r\n"
      "single='y'\r\n"
      "odd=\"z'\r\n"
      "nested=\"\"in\"\"\r\n"
      "equals==1=2\r\n"
      "bare\r\n"
      "bare=late\r\n"
      ";note=5\r\n"
      "[B]junk\n"
      "k=b\r"
      "[a]\r\n"
      "late=1\r\n"
      "[x]y]\r\n"
      "k=bracket\r\n"
      "[open\r\n"
      "[also=7\r\n");
  EXPECT_EQ(Found(document, "", "top"), "1");
  EXPECT_EQ(Found(document, "a", "KEY"), "one two");
  EXPECT_EQ(Found(document, "A", "double"), "x ");
  EXPECT_EQ(Found(document, "A", "single"), "y");
  EXPECT_EQ(Found(document, "A", "odd"), "\"z'");
  EXPECT_EQ(Found(document, "A", "nested"), "\"in\"");
  EXPECT_EQ(Found(document, "A", "equals"), "=1=2");
  EXPECT_EQ(Found(document, "A", "bare"), "<none>")
      << "the first line of a key counts, also without equals sign";
  EXPECT_EQ(Found(document, "A", ";note"), "5");
  EXPECT_EQ(Found(document, "b", "k"), "b");
  EXPECT_EQ(Found(document, "A", "late"), "<none>") << "a second section of the name is not searched";
  EXPECT_EQ(Found(document, "x]y", "k"), "bracket");
  EXPECT_EQ(Found(document, "x]y", "[also"), "7") << "a header needs its closing bracket";
  EXPECT_EQ(Found(document, "missing", "k"), "<none>");
}

TEST(IniDocument, ChangesOnlyWhatItIsAskedTo) {
  const std::string text =
      "; my notes\n"
      "\n"
      "[One]\n"
      "  a = 1   ; not a comment\n"
      "b=2 \n"
      "\n"
      "; about two\n"
      "[Two]\n"
      "c=3";
  IniDocument document(text);
  document.Set("one", "B", "22");
  document.Set("One", "new", "x");
  document.Set("Two", "d", "4");
  document.Set("Three", "e", "5 6 ");
  document.Set("Three", "f", std::string_view("a\r\nk=b\0c", 8));
  EXPECT_EQ(document.Text(),
            "; my notes\n"
            "\n"
            "[One]\n"
            "  a = 1   ; not a comment\n"
            "b=22\n"
            "new=x\n"
            "\n"
            "; about two\n"
            "[Two]\n"
            "c=3\n"
            "d=4\n"
            "[Three]\n"
            "e=5 6 \n"
            "f=a  k=b\n");
}

TEST(IniDocument, RemovesASectionButNotTheRemarksAboutTheNext) {
  const std::string text =
      "top=0\n"
      "[One]\n"
      "a=1\n"
      "; about a\n"
      "bare\n"
      "\n"
      "; about two\n"
      "\n"
      "[Two]\n"
      "b=2\n"
      "[one]\n"
      "c=3\n"
      "; the end";
  IniDocument document(text);
  document.RemoveSection("");
  document.RemoveSection("missing");
  EXPECT_EQ(document.Text(), text);
  document.RemoveSection("ONE");
  EXPECT_EQ(document.Text(), "top=0\n; about two\n\n[Two]\nb=2\n[one]\nc=3\n; the end");
  document.RemoveSection("one");
  EXPECT_EQ(document.Text(), "top=0\n; about two\n\n[Two]\nb=2\n");
}

TEST(IniDocument, ReplacesASectionInItsPlaceAndKeepsItsRemarks) {
  IniDocument document("[One]\n; mine\n\na=1\nbare\n; also\nb=2\n; about two\n[Two]\nc=3\n[Last]");
  const IniEntry entries[] = {{"x", "\"7\""}, {"b", *document.Find("one", "b")}};
  document.ReplaceSection("one", entries);
  EXPECT_EQ(document.Text(), "[One]\n; mine\n\nx=\"\"7\"\"\nb=2\n; also\n; about two\n[Two]\nc=3\n[Last]");
  document.ReplaceSection("Two", {});
  document.ReplaceSection("last", entries);
  document.ReplaceSection("New", entries);
  EXPECT_EQ(document.Text(),
            "[One]\n; mine\n\nx=\"\"7\"\"\nb=2\n; also\n; about two\n[Two]\n"
            "[Last]\nx=\"\"7\"\"\nb=2\n[New]\nx=\"\"7\"\"\nb=2\n");
}

TEST(IniDocument, KeepsAByteOrderMark) {
  IniDocument document("\xEF\xBB\xBF[S]\r\nk=1\r\n");
  EXPECT_EQ(Found(document, "S", "k"), "1");
  document.Set("S", "k", "2");
  EXPECT_EQ(document.Text(), "\xEF\xBB\xBF[S]\r\nk=2\r\n");
}

TEST(IniInteger, ReadsWhatThePlatformReads) {
  const std::pair<const char*, std::int32_t> cases[]{{"12abc", 12},
                                                     {"+7", 7},
                                                     {"0x1F", 31},
                                                     {"0b11", 3},
                                                     {"0o17", 15},
                                                     {"010", 10},
                                                     {"4294967297", 1},
                                                     {"- 5", 0},
                                                     {"--5", 0},
                                                     {"0X1f", 0},
                                                     {"-0x10", -16},
                                                     {" 9 ", 9},
                                                     {"2147483648", -2147483647 - 1},
                                                     {"", 0},
                                                     {"-", 0}};
  for (const auto& [text, number] : cases) EXPECT_EQ(IniInteger(text), number) << text;
}

TEST(IniDocument, TakesOverEveryKeyOfAnotherAsItIsWritten) {
  IniDocument changes("");
  changes.Set("A", "list", "2 4 ");
  changes.Set("B", "new", "");
  changes.Set("A", "quoted", "\"x\"");
  IniDocument store("; mine\r\n[a]\r\nList=1\r\nother=5\r\n");
  store.SetAll(changes);
  EXPECT_EQ(store.Text(), "; mine\r\n[a]\r\nList=2 4 \r\nother=5\r\nquoted=\"\"x\"\"\r\n[B]\r\nnew=\r\n");
  EXPECT_EQ(store.Find("A", "quoted"), "\"x\"");
  const std::string text = store.Text();
  store.SetAll(IniDocument(""));
  EXPECT_EQ(store.Text(), text);
}

}  // namespace
}  // namespace quorvex
