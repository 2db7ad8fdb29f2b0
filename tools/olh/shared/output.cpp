#include "output.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "files.h"

namespace olh {

namespace {

bool has_colours() { return olh_viewers::variable("NO_COLOR").empty() && isatty(STDOUT_FILENO) == 1; }

void print(const std::string& line) { std::fputs((line + "\n").c_str(), stdout); }

}  // namespace

void say(const std::string& line) { print(visible(line)); }

void say_marked(const std::string& before, const std::string& marked, const std::string& after,
                const std::string& code) {
  if (!has_colours()) return say(before + marked + after);
  print(visible(before) + "\033[" + code + "m" + visible(marked) + "\033[0m" + visible(after));
}

void say_numbered(std::size_t number, const std::string& root) {
  const std::string before = std::to_string(number) + ". ";
  number == 1 ? say_marked(before, root) : say(before + root);
}

void complain(const std::string& sentence) {
  std::fflush(stdout);
  std::fputs(("olh: " + visible(sentence) + "\n").c_str(), stderr);
}

int failure(int result, const std::string& sentence) {
  complain(sentence);
  return result;
}

void say_json(const nlohmann::json& answer) {
  print(answer.dump(2, ' ', false, nlohmann::json::error_handler_t::replace));
}

std::string quoted(const std::string& text) { return '"' + text + '"'; }

std::string at_tag(const std::string& tag) { return tag.empty() ? "" : " at " + quoted(tag); }

std::string place_of(const std::string& file, int line) {
  return line > 0 ? file + ", line " + std::to_string(line) : file;
}

std::string sentence_at(const std::string& file, int line, const std::string& rest) {
  return place_of(file, line) + (line > 0 ? ": " : " ") + rest + ".";
}

std::size_t width_of(const std::string& text) {
  const auto begins_character = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins_character));
}

std::string padded(const std::string& text, std::size_t width) {
  return text + std::string(width - std::min(width, width_of(text)), ' ');
}

std::size_t width_of_screen() {
  winsize size = {};
  const bool is_known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return is_known ? size.ws_col : std::string::npos;
}

std::vector<std::string> folded(const std::string& text, std::size_t width) {
  std::vector<std::string> pieces;
  std::string piece;
  for (const char c : text) {
    piece += c;
    if (width_of(piece) <= width) continue;
    const std::size_t blank = piece.rfind(' ');
    const bool has_blank = blank != std::string::npos && blank > 0;
    pieces.push_back(piece.substr(0, has_blank ? blank : piece.size() - 1));
    piece.erase(0, has_blank ? blank + 1 : piece.size() - 1);
  }
  pieces.push_back(piece);
  return pieces;
}

std::string counted(std::size_t number, const char* one, const char* many) {
  return std::to_string(number) + " " + (number == 1 ? one : many);
}

std::string enumeration(const std::vector<std::string>& items) {
  std::string text;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i > 0) text += i + 1 == items.size() ? " and " : ", ";
    text += items[i];
  }
  return text;
}

nlohmann::json text_or_null(const std::string& text) {
  return text.empty() ? nlohmann::json(nullptr) : nlohmann::json(text);
}

nlohmann::json line_or_null(int line) { return line > 0 ? nlohmann::json(line) : nlohmann::json(nullptr); }

}  // namespace olh
