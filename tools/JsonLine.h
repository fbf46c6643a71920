#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kavrelon {

/// One line of JSON, built up part by part and compact. Text is bytes: byte n becomes code point U+00nn, with
/// everything but printable ASCII escaped.
class JsonLine {
  public:
    JsonLine& key(std::string_view name);
    JsonLine& value(std::string_view bytes);
    JsonLine& value(const char* bytes) { return value(std::string_view(bytes)); }
    JsonLine& value(std::int64_t number);
    JsonLine& value(bool flag);
    /// A finite number, with up to six significant digits.
    JsonLine& value(float number);
    JsonLine& beginObject() { return open('{'); }
    JsonLine& endObject() { return close('}'); }
    JsonLine& beginArray() { return open('['); }
    JsonLine& endArray() { return close(']'); }

    const std::string& text() const { return text_; }

  private:
    JsonLine& open(char bracket);
    JsonLine& close(char bracket);
    void separate();
    void quote(std::string_view bytes);

    std::string text_;
    bool needsComma_ = false;
};

}  // namespace kavrelon
