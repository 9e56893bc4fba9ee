#pragma once
// Another catalog with the same names. It has only what the library calls, each of which a program
// can let fail, and what the tests need to fill it.
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include <boost/date_time/posix_time/ptime.hpp>

namespace fl::i18n {

using ustring = std::u16string;

/// Does nothing, unless a program defines it.
void beforeCall();

class Locale {
  public:
    explicit Locale(std::string name = "en") : name_(std::move(name)) {}
    [[nodiscard]] static Locale global();
    static void setGlobal(Locale locale);
    [[nodiscard]] const std::string& name() const { return name_; }

  private:
    std::string name_;
};

class MessageID {
  public:
    explicit MessageID(std::string full) : full_(std::move(full)) {}
    MessageID(std::string_view catalog, std::string_view key)
        : full_(std::string(catalog).append(":").append(key)) {}
    [[nodiscard]] const std::string& full() const { return full_; }

  private:
    std::string full_;
};

/// Not a `std::runtime_error`, unlike the platform's.
class MessageNotFound : public std::exception {
  public:
    [[nodiscard]] const char* what() const noexcept override { return "no such message"; }
};

class MessageCatalog {
  public:
    [[nodiscard]] static const ustring& get_message(const MessageID& id, const Locale& locale);
    static void add(const std::string& locale, std::string_view json);
    static void clear();
};

[[nodiscard]] std::string ustring_to_utf8(std::u16string_view text);
[[nodiscard]] std::string to_string(std::u16string_view text);
[[nodiscard]] ustring utf8_to_ustring(std::string_view text);
[[nodiscard]] ustring to_lower(ustring text, const Locale& locale = Locale::global());

enum class DateFormat { medium = 2 };

namespace date_time {
[[nodiscard]] ustring to_ustring(const boost::posix_time::ptime& time, DateFormat format);
}  // namespace date_time
}  // namespace fl::i18n
