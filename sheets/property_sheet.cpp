#include "sheets/property_sheet.hpp"

#include <bit>
#include <cstring>
#include <map>
#include <type_traits>

#include "base/runtime_exception.hpp"

namespace drav {
namespace {

const std::map<std::string, PropertyType, std::less<>>& Types() {
  using enum PropertyType;
  static const std::map<std::string, PropertyType, std::less<>> types = [] {
    std::map<std::string, PropertyType, std::less<>> t;
    for (const char* name :
         {"Visible", "Enabled", "LockLeft", "LockTop", "LockRight", "LockBottom", "TabStop", "Bold", "Italic",
          "Underline", "ReadOnly", "Multiline", "Resizeable", "HasCloseButton", "HasMinimizeButton",
          "HasMaximizeButton", "HasFullScreenButton", "FullScreen", "Composite", "HasBackgroundColor",
          "MenuBarVisible", "LiveResize", "HasBorder", "Transparent", "AllowFocusRing", "AllowTabs",
          "AllowSpellChecking", "Password", "HasVerticalScrollbar", "HasHorizontalScrollbar", "AllowStyledText",
          "HideSelection", "AllowAutoDeactivate", "Selectable", "Default", "Cancel", "AllowFocus", "DoubleBuffer"}) {
      t.emplace(name, Boolean);
    }
    for (const char* name :
         {"Left", "Top", "Width", "Height", "MinimumWidth", "MinimumHeight", "MaximumWidth", "MaximumHeight", "Type",
          "DefaultLocation", "MacProcID", "Index", "TabIndex", "TabPanelIndex", "TextAlignment",
          "MaximumCharactersAllowed", "UnicodeMode", "MacButtonStyle", "Period", "RunMode", "FontUnit"}) {
      t.emplace(name, Integer);
    }
    t.emplace("FontSize", Single);
    for (const char* name : {"LineHeight", "LineSpacing", "BorderThickness", "CornerHeight", "CornerWidth"}) {
      t.emplace(name, Double);
    }
    for (const char* name : {"BackgroundColor", "TextColor", "BorderColor", "FillColor"}) t.emplace(name, Colour);
    for (const char* name : {"Name", "Title", "Caption", "Value", "FontName", "Tooltip", "Hint", "Format",
                             "ValidationMask", "DataSource", "DataField", "InitialParent"}) {
      t.emplace(name, Text);
    }
    return t;
  }();
  return types;
}

bool Matches(PropertyType type, const PropertyValue& value) {
  switch (type) {
    case PropertyType::Boolean: return std::holds_alternative<bool>(value);
    case PropertyType::Integer: return std::holds_alternative<std::int64_t>(value);
    case PropertyType::Single: return std::holds_alternative<Single>(value);
    case PropertyType::Double: return std::holds_alternative<double>(value);
    case PropertyType::Colour: return std::holds_alternative<Color>(value);
    case PropertyType::Text: return std::holds_alternative<std::string>(value);
  }
  return false;
}

template <class T>
void PutLittleEndian(std::string& out, T value) {
  for (std::size_t i = 0; i < sizeof(T); ++i) out += static_cast<char>((value >> (8 * i)) & 0xFF);
}

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}
  bool AtEnd() const { return position_ == bytes_.size(); }

  std::string_view Take(std::size_t n) {
    if (bytes_.size() - position_ < n) throw UnsupportedFormatException("property sheet is truncated");
    const std::string_view taken = bytes_.substr(position_, n);
    position_ += n;
    return taken;
  }

  template <class T>
  T LittleEndian() {
    const std::string_view raw = Take(sizeof(T));
    std::make_unsigned_t<T> value = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i) {
      value |= static_cast<std::make_unsigned_t<T>>(static_cast<unsigned char>(raw[i])) << (8 * i);
    }
    return static_cast<T>(value);
  }

  std::string_view Name() {
    const std::size_t blank = bytes_.find(' ', position_);
    if (blank == std::string_view::npos) throw UnsupportedFormatException("property sheet is truncated");
    const std::string_view name = bytes_.substr(position_, blank - position_);
    position_ = blank + 1;
    return name;
  }

 private:
  std::string_view bytes_;
  std::size_t position_ = 0;
};

}  // namespace

PropertyType TypeOf(std::string_view name) {
  const auto found = Types().find(name);
  if (found == Types().end()) throw UnsupportedFormatException("unknown property \"" + std::string(name) + "\"");
  return found->second;
}

std::string EncodeSheet(const std::vector<Property>& sheet) {
  std::string out;
  for (const Property& p : sheet) {
    const PropertyType type = TypeOf(p.name);
    if (!Matches(type, p.value)) throw UnsupportedFormatException("property \"" + p.name + "\" has a value of the wrong type");
    out += p.name;
    out += ' ';
    switch (type) {
      case PropertyType::Boolean: out += static_cast<char>(std::get<bool>(p.value) ? 1 : 0); break;
      case PropertyType::Integer: PutLittleEndian(out, static_cast<std::uint64_t>(std::get<std::int64_t>(p.value))); break;
      case PropertyType::Single: PutLittleEndian(out, std::bit_cast<std::uint32_t>(std::get<Single>(p.value).value)); break;
      case PropertyType::Double: PutLittleEndian(out, std::bit_cast<std::uint64_t>(std::get<double>(p.value))); break;
      case PropertyType::Colour: {
        const Color c = std::get<Color>(p.value);
        out += static_cast<char>(c.blue);
        out += static_cast<char>(c.green);
        out += static_cast<char>(c.red);
        out += static_cast<char>(c.alpha);
        break;
      }
      case PropertyType::Text: {
        const std::string& text = std::get<std::string>(p.value);
        PutLittleEndian(out, static_cast<std::uint32_t>(text.size()));
        out += text;
        break;
      }
    }
  }
  return out;
}

std::vector<Property> DecodeSheet(std::string_view bytes) {
  std::vector<Property> sheet;
  Reader in(bytes);
  while (!in.AtEnd()) {
    std::string name(in.Name());
    switch (TypeOf(name)) {
      case PropertyType::Boolean: {
        const char b = in.Take(1)[0];
        if (b != 0 && b != 1) throw UnsupportedFormatException("property \"" + name + "\" is no Boolean");
        sheet.push_back({std::move(name), b == 1});
        break;
      }
      case PropertyType::Integer: sheet.push_back({std::move(name), in.LittleEndian<std::int64_t>()}); break;
      case PropertyType::Single:
        sheet.push_back({std::move(name), Single{std::bit_cast<float>(in.LittleEndian<std::uint32_t>())}});
        break;
      case PropertyType::Double:
        sheet.push_back({std::move(name), std::bit_cast<double>(in.LittleEndian<std::uint64_t>())});
        break;
      case PropertyType::Colour: {
        const std::string_view c = in.Take(4);
        sheet.push_back({std::move(name), Color{static_cast<std::uint8_t>(c[2]), static_cast<std::uint8_t>(c[1]),
                                                static_cast<std::uint8_t>(c[0]), static_cast<std::uint8_t>(c[3])}});
        break;
      }
      case PropertyType::Text: {
        const auto length = in.LittleEndian<std::uint32_t>();
        sheet.push_back({std::move(name), std::string(in.Take(length))});
        break;
      }
    }
  }
  return sheet;
}

}  // namespace drav
