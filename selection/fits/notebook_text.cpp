#include "selection/fits/notebook_text.hpp"

#include <charconv>
#include <map>
#include <memory>
#include <vector>

#include "base/errors.hpp"
#include "base/utf8.hpp"
#include "selection/fits/fit_refusal.hpp"
#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {
namespace {

// Only what a notebook needs: objects, arrays and strings are kept; numbers,
// true, false and null are skipped over.
struct Json {
  enum class Type { Other, String, Array, Object } type = Type::Other;
  std::string text;
  std::vector<Json> items;
  std::map<std::string, Json, std::less<>> fields;

  const Json* Field(std::string_view name) const {
    const auto it = fields.find(name);
    return it == fields.end() ? nullptr : &it->second;
  }
};

class Parser {
 public:
  Parser(std::string_view text, const std::string& source) : text_(text), source_(source) {}

  Json Value(int depth = 0) {
    if (depth > 64) Fail("nested too deep");
    Skip();
    if (at_ >= text_.size()) Fail("ends early");
    Json value;
    const char c = text_[at_];
    if (c == '"') {
      value.type = Json::Type::String;
      value.text = String();
    } else if (c == '[') {
      value.type = Json::Type::Array;
      ++at_;
      if (!Take(']')) {
        do value.items.push_back(Value(depth + 1));
        while (Take(','));
        Expect(']');
      }
    } else if (c == '{') {
      value.type = Json::Type::Object;
      ++at_;
      if (!Take('}')) {
        do {
          Skip();
          std::string key = String();
          Expect(':');
          value.fields[std::move(key)] = Value(depth + 1);
        } while (Take(','));
        Expect('}');
      }
    } else {
      const std::size_t end = text_.find_first_of(",]} \t\r\n", at_);
      if (end == at_) Fail("holds an unexpected character");
      at_ = end == std::string_view::npos ? text_.size() : end;
    }
    return value;
  }

 private:
  [[noreturn]] void Fail(const std::string& why) const {
    Refuse(source_, 0, "a notebook whose JSON " + why + " (at byte " + std::to_string(at_) + ")");
  }
  void Skip() {
    while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\n' || text_[at_] == '\r' || text_[at_] == '\t')) ++at_;
  }
  bool Take(char c) {
    Skip();
    if (at_ < text_.size() && text_[at_] == c) {
      ++at_;
      return true;
    }
    return false;
  }
  void Expect(char c) {
    if (!Take(c)) Fail(std::string("lacks a '") + c + "'");
  }
  unsigned Hex4() {
    unsigned code = 0;
    if (at_ + 4 > text_.size() || std::from_chars(text_.data() + at_, text_.data() + at_ + 4, code, 16).ptr != text_.data() + at_ + 4) {
      Fail("has a bad \\u escape");
    }
    at_ += 4;
    return code;
  }
  std::string String() {
    if (at_ >= text_.size() || text_[at_] != '"') Fail("lacks a string where one belongs");
    ++at_;
    std::string out;
    while (true) {
      const std::size_t stop = text_.find_first_of("\"\\", at_);
      if (stop == std::string_view::npos) Fail("has a string without its end");
      out.append(text_.substr(at_, stop - at_));
      at_ = stop + 1;
      if (text_[stop] == '"') return out;
      if (at_ >= text_.size()) Fail("ends in an escape");
      const char e = text_[at_++];
      switch (e) {
        case 'n': out += '\n'; break;
        case 't': out += '\t'; break;
        case 'r': out += '\r'; break;
        case 'b': out += '\b'; break;
        case 'f': out += '\f'; break;
        case 'u': {
          unsigned code = Hex4();
          if (code >= 0xD800 && code < 0xDC00 && text_.substr(at_, 2) == "\\u") {
            at_ += 2;
            code = 0x10000 + ((code - 0xD800) << 10) + (Hex4() - 0xDC00);
          }
          utf8::Append(out, code);
          break;
        }
        default: out += e;  // \" \\ \/
      }
    }
  }

  std::string_view text_;
  const std::string& source_;
  std::size_t at_ = 0;
};

// nbformat writes a multi-line string as an array of lines, or as one string.
std::string Joined(const Json* value) {
  if (!value) return {};
  if (value->type == Json::Type::String) return value->text;
  std::string out;
  for (const Json& item : value->items) out += item.text;
  return out;
}

void AppendLines(std::string& out, const std::string& text, std::string_view first, std::string_view more) {
  bool isFirst = true;
  for (const TextLine& line : SplitLines(text)) {
    out.append(isFirst ? first : more).append(line.text).append("\n");
    isFirst = false;
  }
}

}  // namespace

bool LooksLikeNotebook(std::string_view text) {
  const std::string_view start = Trimmed(text.substr(0, 200));
  return start.starts_with("{") && text.find("\"cells\"") != std::string_view::npos &&
         text.find("\"nbformat\"") != std::string_view::npos;
}

std::string NotebookOutputText(std::string_view json, const std::string& source) {
  const Json root = Parser(json, source).Value();
  std::string out;
  const Json* cells = root.Field("cells");
  if (!cells) return out;
  for (const Json& cell : cells->items) {
    const Json* type = cell.Field("cell_type");
    if (!type || type->text != "code") continue;
    AppendLines(out, Joined(cell.Field("source")), "> ", "+ ");
    const Json* outputs = cell.Field("outputs");
    if (!outputs) continue;
    for (const Json& output : outputs->items) {
      if (const Json* text = output.Field("text")) AppendLines(out, Joined(text), "", "");
      if (const Json* data = output.Field("data")) AppendLines(out, Joined(data->Field("text/plain")), "", "");
    }
  }
  return out;
}

}  // namespace drav::selection::fits
