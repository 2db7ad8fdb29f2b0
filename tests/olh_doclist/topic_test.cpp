#include <sys/stat.h>

#include "lookup_scene.h"

namespace {

using olh_test::Found;
using olh_test::kUntouched;

class Topic : public olh_test::LookupScene {
 protected:
  void set_table(std::string_view text) { write("manual/QELdata/QELAllData.js", text); }
  Found topic(const std::string& name) { return topic_at(location(), name); }
  Found topic_at(const std::string& at, const std::string& name) {
    return find([&](char* out, char*) { return locator.FindHtmlTopic(at.c_str(), name.c_str(), out); });
  }
  std::string location() const { return "file://" + dir + "/manual/index.htm"; }
};

TEST_F(Topic, LinesOfATable) {
  struct {
    std::string line;
    int result;
    std::string page;
  } const cases[] = {
      {"QELAddTopic([\"Intro\",\"intro.htm\",1]);\n", 1, "intro.htm"},
      {"QELAddTopic([\"In tro!\", \"a b.htm\"", 1, "a b.htm"},
      {"QELAddTopic([\"iNTRO\",\"\"", 1, ""},
      {"QELAddTopic([\"Intro\",\"open.htm\nnext", 1, "open.htm"},
      {"QELAddTopic([\"Intro\"\"no.htm", 1, kUntouched},  // the one separator may be anything
      {"QELAddTopic([\"Intro\"\"\"a.htm\"", 1, "a.htm"},
      {"QELAddTopic([\"Intro\",null]);\n", 1, kUntouched},
      {"QELAddTopic([\"Intro\"", 1, kUntouched},
      {"QELAddTopic([\"Intro\n\"", 0, kUntouched},
      {" QELAddTopic([\"Intro\",\"x\"]);\n", 0, kUntouched},
      {"QELAddTopic( [\"Intro\",\"x\"]);\n", 0, kUntouched},
      {"QELAddTopic([\"Introduction\",\"x\"]);\n", 0, kUntouched},
      {"QELAddTopic([\"In_tro\",\"x\"]);\n", 0, kUntouched},
      {"", 0, kUntouched},
      // A long line comes in pieces of 4095 bytes, and each is looked at.
      {std::string(4095, 'x') + "QELAddTopic([\"Intro\",\"p.htm\"", 1, "p.htm"},
      {std::string(4094, 'x') + "QELAddTopic([\"Intro\",\"p.htm\"", 0, kUntouched},
      {std::string("\0\nQELAddTopic([\"In\0tro\",\"n.htm\"", 31), 1, "n.htm"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.line.substr(0, 60));
    set_table(c.line);
    EXPECT_EQ(topic("Intro"), (Found{c.result, c.page, kUntouched}));
  }
}

TEST_F(Topic, WantedTopicIsNormalisedToo) {
  set_table("QELAddTopic([\"gettingstarted\",\"a.htm\"\nQELAddTopic([\"b-c_D\",\"b.htm\"\n");
  EXPECT_EQ(topic("Getting Started").location, "a.htm");
  EXPECT_EQ(topic("getting_started").result, 0);
  EXPECT_EQ(topic("B-C_d()").location, "b.htm");
}

TEST_F(Topic, FirstOfEqualTopicsWins) {
  set_table("var x;\nQELAddTopic([\"a\",\"1\"\nQELAddTopic([\"A\",\"2\"\n");
  EXPECT_EQ(topic("a").location, "1");
  EXPECT_EQ(locator.FindHtmlTopic(location().c_str(), "a", nullptr), 1);
}

TEST_F(Topic, TableLiesBesideThePage) {
  set_table("QELAddTopic([\"a\",\"1\"\n");
  EXPECT_EQ(topic_at("file://" + dir + "\\manual\\other.htm", "a").result, 1);
  EXPECT_EQ(topic_at("file://" + dir + "/manual/", "a").result, 0) << "the page is then the directory";
  EXPECT_EQ(topic_at(dir + "/manual/index.htm", "a").result, 0);
  EXPECT_EQ(topic_at("http://h/manual/index.htm", "a").result, 0);
  EXPECT_EQ(topic_at("file://" + std::string(5000, 'd') + "/index.htm", "a").result, 0);
  EXPECT_EQ(topic_at("", "a").result, 0);
  EXPECT_EQ(topic("").result, 0);
  EXPECT_EQ(locator.FindHtmlTopic(nullptr, "a", nullptr), 0);
  EXPECT_EQ(locator.FindHtmlTopic(location().c_str(), nullptr, nullptr), 0);
}

TEST_F(Topic, FifoInPlaceOfTheTableDoesNotBlock) {
  make_directory("manual/QELdata");
  ASSERT_EQ(mkfifo((dir + "/manual/QELdata/QELAllData.js").c_str(), 0600), 0);
  EXPECT_EQ(topic("a").result, 0);
}

TEST_F(Topic, DebugLines) {
  set_table("QELAddTopic([\"A B\",\"1\"\n");
  const std::string start = "olh_docList::FindHtmlTopic\n";
  const std::string looking = start + "olh_docList::FindHtmlTopic: looking for topic: ";
  const std::string done = "olh_docList::FindHtmlTopic: done\n";
  EXPECT_EQ(said_by([&] { topic("a B"); }), looking + "ab\nolh_docList::FindHtmlTopic: found topic: ab\n" + done);
  EXPECT_EQ(said_by([&] { topic("c"); }), looking + "c\n" + done);
  EXPECT_EQ(said_by([&] { topic_at("http://h/x", "c"); }), start);
}

}  // namespace
