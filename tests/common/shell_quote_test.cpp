#include "shell_quote.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "command.h"

namespace {

const std::pair<std::string, std::string> kCases[] = {
    {"/opt/a-b_c.d+e,f:g@h%i=j/firefox", "/opt/a-b_c.d+e,f:g@h%i=j/firefox"},
    {"/opt/M\xc3\xbcller/firefox", "/opt/M\xc3\xbcller/firefox"},
    {"", "''"},
    {"/opt/my browser", "'/opt/my browser'"},
    {"it's", "'it'\\''s'"},
    {"$(touch x)`touch y`$HOME${HOME}", "'$(touch x)`touch y`$HOME${HOME}'"},
    {"a;b&c|d>e<f", "'a;b&c|d>e<f'"},
    {"PATH=/tmp", "'PATH=/tmp'"},
    {"PATH+=/tmp", "'PATH+=/tmp'"},
    {"1+=x", "'1+=x'"},
    {"+=x", "+=x"},
    {"if", "'if'"},
    {"time", "'time'"},
    {"/bin/if", "/bin/if"},
    {"%1", "'%1'"},
    {"~root", "'~root'"},
    {"/*[a-z]?{b,c}!", "'/*[a-z]?{b,c}!'"},
    {"#x", "'#x'"},
    {"a\nb\n", "'a\nb\n'"},
    {"a\\b\\\\", "'a\\b\\\\'"},
};

// What the shell makes of one quoted word, between two marks so that line feeds at its end count too.
std::string word_seen_by_a_program(const std::string& quoted) {
  std::string seen;
  olh::read_command("printf '<%s>\n' " + quoted, [&seen](std::string_view line) {
    if (!seen.empty()) seen += '\n';
    seen += line;
  });
  return seen;
}

void expect_same_bytes(const std::string& text) {
  const std::string expected = "<" + text + ">";
  EXPECT_EQ(word_seen_by_a_program(olh::shell_bare(text)), expected);
  EXPECT_EQ(word_seen_by_a_program("'" + olh::shell_in_single_quotes(text) + "'"), expected);
  EXPECT_EQ(word_seen_by_a_program("\"" + olh::shell_in_double_quotes(text) + "\""), expected);
}

TEST(ShellQuote, OnlyWhatTheShellActsOnIsQuoted) {
  for (const auto& [text, bare] : kCases) EXPECT_EQ(olh::shell_bare(text), bare);
  const std::string url = "file:///d/index.htm?a=b%20c#context=&topic=Intro";
  EXPECT_EQ(olh::shell_in_single_quotes(url), url);
  EXPECT_EQ(olh::shell_in_double_quotes(url), url);
}

TEST(ShellQuote, ProgramGetsTheSameBytes) {
  for (const auto& [text, bare] : kCases) expect_same_bytes(text);
  std::string every_byte;
  for (int c = 1; c < 256; ++c) every_byte += static_cast<char>(c);
  expect_same_bytes(every_byte);
}

}  // namespace
