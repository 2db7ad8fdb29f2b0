#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "olh/support.h"
#include "olh_doclist.h"

namespace {

constexpr std::size_t kUrlSize = 2048;

class UrlBuild : public ::testing::Test {
 protected:
  using InPlace = void (olh_docList::*)(char*);
  // A text after one of the operations that rewrite it.
  std::string after(InPlace operation, const std::string& text) {
    std::array<char, kUrlSize> buffer{};
    text.copy(buffer.data(), buffer.size() - 1);
    (locator.*operation)(buffer.data());
    return buffer.data();
  }
  std::string full_url(const char* location, const char* topic) {
    std::array<char, kUrlSize> url{"untouched"};
    locator.BuildFullURL(url.data(), location, topic);
    return url.data();
  }
  std::string pdf_url(const char* location, const char* destination) {
    std::array<char, kUrlSize> url{"untouched"};
    locator.BuildPDFNewlinkURL(url.data(), location, destination);
    return url.data();
  }

  olh_docList locator;
};

TEST_F(UrlBuild, FiveCharactersAreEncoded) {
  const std::pair<const char*, const char*> cases[] = {
      {"a b,(c)'d", "a%20b%2C%28c%29%27d"},
      {"%#&?=/\"\\\xff~", "%#&?=/\"\\\xff~"},
      {"%20", "%20"},
      {"", ""},
  };
  for (const auto& [text, encoded] : cases) {
    EXPECT_EQ(after(&olh_docList::EncodeSpecialCharsInURL, text), encoded);
    EXPECT_EQ(after(&olh_docList::EncodeSpecialCharsInURL, encoded), encoded);
  }
  locator.EncodeSpecialCharsInURL(nullptr);
}

TEST_F(UrlBuild, ATopicKeepsLettersDigitsMinusAndUnderscore) {
  EXPECT_EQ(after(&olh_docList::FormatTopic, "my topic-1_a.b"), "mytopic-1_ab");
  EXPECT_EQ(after(&olh_docList::FormatTopic, "<>&#'\xe4\n"), "");
  locator.FormatTopic(nullptr);
}

TEST_F(UrlBuild, ATagBecomesADestination) {
  const std::pair<const char*, const char*> cases[] = {
      {"Setting Up (Linux)", "M8.newlink.Setting.Up.Linux"},
      {"a-b_c.d", "M8.newlink.abcd"},
      {"()", "M8.newlink."},
      {" ", "M8.newlink.."},
      {"", ""},
  };
  for (const auto& [tag, destination] : cases) EXPECT_EQ(after(&olh_docList::FormatNewlink, tag), destination);
}

TEST_F(UrlBuild, ALocationAndItsTopicBecomeOneUrl) {
  const std::tuple<const char*, const char*, int, const char*, const char*> cases[] = {
      {"file:///d/index.htm", "Intro", 0, nullptr, "file:///d/index.htm#context=&topic=Intro"},
      {"file:///d/index.htm", "Intro", 1, nullptr, "file:///d/index.htm#context=&topic=Intro&single=true"},
      {"file:///d/index.htm", "Intro", 2, "guide", "file:///d/index.htm#context=guide&topic=Intro&single=popup"},
      {"file:///d/index.htm", "Intro", 7, "g d&", "file:///d/index.htm#context=g d&&topic=Intro"},
      {"file:///a b/index.htm", "In tro", 0, nullptr, "file:///a%20b/index.htm#context=&topic=Intro"},
      {"file:///d/index.htm", "", 2, "guide", "file:///d/index.htm"},
      {"file:///d/index.htm", "<>", 2, "guide", "file:///d/index.htm"},
      {"file:///d/index.html", "Intro", 2, "guide", "file:///d/index.html#Intro"},
      {"file:///index.htm/d/index.htm", "Intro", 2, nullptr, "file:///index.htm/d/index.htm#Intro"},
      {"file:///d/x.htm", nullptr, 0, nullptr, "file:///d/x.htm"},
      {"", "Intro", 0, nullptr, ""},
      {nullptr, "Intro", 0, nullptr, ""},
  };
  for (const auto& [location, topic, display, context, url] : cases) {
    locator.mDisplayType = display;
    locator.mContext = context == nullptr ? nullptr : strdup(context);
    EXPECT_EQ(full_url(location, topic), url);
    std::free(std::exchange(locator.mContext, nullptr));
  }
  locator.BuildFullURL(nullptr, "file:///d", "x");
}

TEST_F(UrlBuild, APdfUrlTakesItsDestinationAsItIs) {
  EXPECT_EQ(pdf_url("http://h/a b.pdf", "M8.newlink.A,B"), "http://h/a%20b.pdf#M8.newlink.A,B");
  EXPECT_EQ(pdf_url("http://h/a.pdf", ""), "http://h/a.pdf");
  EXPECT_EQ(pdf_url("http://h/a.pdf", nullptr), "http://h/a.pdf");
  EXPECT_EQ(pdf_url("", "M8"), "");
  EXPECT_EQ(pdf_url(nullptr, "M8"), "");
  locator.BuildPDFNewlinkURL(nullptr, "http://h", nullptr);
}

// Refused, never cut: half a URL would open something else.
TEST_F(UrlBuild, WhatDoesNotFitIsNoUrl) {
  const std::string fits(kUrlSize - 1, 'a');
  const std::string grows(kUrlSize - 2, ' ');
  EXPECT_EQ(after(&olh_docList::EncodeSpecialCharsInURL, fits), fits);
  EXPECT_EQ(after(&olh_docList::EncodeSpecialCharsInURL, grows), "");
  EXPECT_EQ(after(&olh_docList::FormatNewlink, fits), "");
  EXPECT_EQ(full_url(fits.c_str(), nullptr), fits);
  EXPECT_EQ(full_url(fits.c_str(), "t"), "");
  EXPECT_EQ(full_url("file:///x", std::string(5000, 't').c_str()), "");
  EXPECT_EQ(pdf_url(fits.c_str(), "d"), "");
}

}  // namespace
