// The parts of the adapters that turn one text into another.
#include <gtest/gtest.h>

#include <map>

#include "browser_list.h"
#include "choice.h"
#include "desktop_default.h"
#include "pdf_places.h"
#include "topic_page.h"
#include "url.h"

namespace {

using olh_viewers::Words;

TEST(Address, OnlyPlainOnesReachABrowser) {
  for (const char* good : {"http://h/a?b#c", "https://h/", "file:///d/a b.htm", "file:///d/\xc3\xbc.htm"})
    EXPECT_EQ(olh_viewers::objection_to(good), "") << good;
  for (const char* bad : {"-P", "--help", "javascript:alert(1)", "data:text/html,x", "/etc/passwd", "HTTP://h/", "",
                          "http://h/\n", "file:///a\x7f", "file:///a\x1b[2J"})
    EXPECT_NE(olh_viewers::objection_to(bad), "") << bad;
}

TEST(Address, FileAndBack) {
  EXPECT_EQ(olh_viewers::file_of("file:///d/a%20b%23%zz.pdf?x#M8.newlink.a"), "/d/a b#%zz.pdf");
  EXPECT_EQ(olh_viewers::file_of("file:///d/a%00b"), "");
  EXPECT_EQ(olh_viewers::file_of("http://h/a"), "");
  EXPECT_EQ(olh_viewers::url_of("/d/a b#\xc3\xbc%.pdf"), "file:///d/a%20b%23%C3%BC%25.pdf");
}

TEST(DesktopEntry, ExecLineIsSplitIntoWords) {
  const std::pair<const char*, Words> cases[] = {
      {"firefox %u", {"firefox", "%u"}},
      {R"("/opt/my browser/run" --flag="a b"  %U)", {"/opt/my browser/run", "--flag=a b", "%U"}},
      {R"(sh -c "echo \"\$x\" \\")", {"sh", "-c", R"(echo "$x" \)"}},
      {"a \"\" b", {"a", "", "b"}},
      {"", {}},
  };
  for (const auto& [line, words] : cases) EXPECT_EQ(olh_viewers::exec_words(line), words) << line;
}

TEST(BrowserList, ReadAsOtherProgramsDo) {
  const std::pair<const char*, std::vector<Words>> cases[] = {
      {"firefox:/opt/my/browser", {{"firefox"}, {"/opt/my/browser"}}},
      {R"(::chromium --app=%s:"/my browsers/x" -P "a b" %s &:)",
       {{"chromium", "--app=%u"}, {"/my browsers/x", "-P", "a b", "%u"}}},
      {"x h%c//%s %% 100% %u", {{"x", "h://%u", "%%", "100%%", "%%u"}}},
      {"w3m:/usr/bin/lynx -x:www-browser: ", {}},
  };
  for (const auto& [value, browsers] : cases) EXPECT_EQ(olh_viewers::browser_list(value), browsers) << value;
}

TEST(Programs, LinesForAPlace) {
  const olh_viewers::Place place = {"file:///d/a%20b.pdf", "/d/a b.pdf", "M8.newlink.A(b)", 7};
  const auto line = [&place](const char* name, Words olh_viewers::Program::*form) {
    return olh_viewers::command_line(olh_viewers::filled(olh_viewers::program_named(name)->*form, place));
  };
  EXPECT_EQ(line("evince", &olh_viewers::Program::at_destination), "'--named-dest=M8.newlink.A(b)' '/d/a b.pdf'");
  EXPECT_EQ(line("okular", &olh_viewers::Program::at_destination),
            "--unique file:///d/a%20b.pdf#M8.newlink.A%28b%29");
  EXPECT_EQ(line("zathura", &olh_viewers::Program::at_page), "-P 7 '/d/a b.pdf'");
  EXPECT_EQ(line("chromium", &olh_viewers::Program::at_destination),
            "file:///d/a%20b.pdf#nameddest=M8.newlink.A%28b%29");
  EXPECT_EQ(line("acroread", &olh_viewers::Program::at_destination),
            "-openInNewWindow /a 'nameddest=M8.newlink.A(b)' '/d/a b.pdf'");
  EXPECT_EQ(olh_viewers::program_named("notepad"), nullptr);
}

TEST(PdfPlaces, PageOfADestination) {
  const std::string listing =
      "Page  Destination                 Name\n"
      "   2 [ XYZ    0  842 null      ] \"M8.newlink.A\"\n"
      "  14 [ Fit                     ] \"M8.newlink.A.B\"\n"
      "  99 [ Fit                     ] \"] \"M8.newlink.C\"\"\n";
  EXPECT_EQ(olh_viewers::place_in_listing(listing, "M8.newlink.A").page, 2);
  EXPECT_EQ(olh_viewers::place_in_listing(listing, "M8.newlink.A.B").page, 14);
  EXPECT_EQ(olh_viewers::place_in_listing(listing, "newlink.A").found, olh_viewers::Found::kNo);
  EXPECT_EQ(olh_viewers::place_in_listing("", "M8.newlink.A").found, olh_viewers::Found::kNo);
}

TEST(TopicPage, LedThroughTheTable) {
  const std::string table =
      "QELAddBookVar(\"DocTitle\",\"Guide\");\n"
      "QELAddTopic([\"Intro\",\"intro.htm\",\"Introduction\"]);\n"
      "  QELAddTopic([\"indented\",\"no.htm\"]);\n"
      "QELAddTopic([\"out\",\"../../etc/passwd\"]);\n"
      "QELAddTopic([\"away\",\"http://elsewhere/\"]);\n"
      "QELAddTopic([\"bare\"]);\n";
  const std::map<std::string, std::string> files = {{"file:///d/g/QELdata/QELAllData.js", table},
                                                    {"file:///d/tomedecks/basic.htm", "documents"}};
  const auto fetch = [&files](const std::string& url) {
    const auto found = files.find(url);
    return found == files.end() ? "" : found->second;
  };
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"file:///d/g/index.htm#context=&topic=intro&single=popup", "file:///d/g/intro.htm", ""},
      {"file:///d/g/index.htm#context=&topic=IN-TRO", "file:///d/g/index.htm", "IN-TRO"},
      {"file:///d/g/index.htm#context=&topic=indented", "file:///d/g/index.htm", "indented"},
      {"file:///d/g/index.htm#context=&topic=out", "file:///d/g/index.htm", "out"},
      {"file:///d/g/index.htm#context=&topic=away", "file:///d/g/index.htm", "away"},
      {"file:///d/g/index.htm#context=&topic=bare", "file:///d/g/index.htm", "bare"},
      {"file:///d/g/index.htm", "file:///d/g/index.htm", ""},
      {"file:///d/g/g.htm#Intro", "file:///d/g/g.htm#Intro", ""},
      {"file:///d/tomedecks/index.html?tomedeck=a_td&tab=b", "file:///d/tomedecks/basic.htm", ""},
      {"file:///d/index.html#query=x&tab=search", "file:///d/tomedecks/basic.htm", ""},
      {"file:///e/index.html?x", "file:///e/index.html?x", ""},
  };
  for (const auto& [url, page, missing] : cases) {
    const olh_viewers::TextPage led = olh_viewers::page_without_scripts(url, fetch);
    EXPECT_EQ(led.url, page) << url;
    EXPECT_EQ(led.missing, missing) << url;
  }
}

}  // namespace
