#include "lookup_scene.h"

namespace {

using namespace olh_test;

class Topic : public LookupScene {
 protected:
  void set_table(std::string_view text) { write("manual/QELdata/QELAllData.js", text); }
  Found topic(const std::string& name) { return topic_at(location(), name); }
  Found topic_at(const std::string& at, const std::string& name) {
    return find([&](char* out, char*) { return locator.FindHtmlTopic(at.c_str(), name.c_str(), out); });
  }
  std::string location() const { return "file://" + dir + "/manual/index.htm"; }
};

TEST_F(Topic, LinesOfATable) {
  const std::tuple<std::string, int, std::string> cases[] = {
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
  for (const auto& [line, result, page] : cases) {
    set_table(line);
    EXPECT_EQ(topic("Intro"), (Found{result, page, kUntouched})) << line.substr(0, 60);
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
  for (const std::string& nowhere : {"file://" + dir + "/manual/",  // the page is then the directory
                                     dir + "/manual/index.htm", std::string("http://h/manual/index.htm"),
                                     "file://" + std::string(5000, 'd') + "/index.htm", std::string()})
    EXPECT_EQ(topic_at(nowhere, "a").result, 0) << nowhere;
  EXPECT_EQ(topic("").result, 0);
  EXPECT_EQ(locator.FindHtmlTopic(nullptr, "a", nullptr), 0);
  EXPECT_EQ(locator.FindHtmlTopic(location().c_str(), nullptr, nullptr), 0);
}

TEST_F(Topic, FifoInPlaceOfTheTableDoesNotBlock) {
  make_fifo("manual/QELdata/QELAllData.js");
  EXPECT_EQ(topic("a").result, 0);
}

}  // namespace
