#include <utility>

#include "formats/json_records.h"

namespace depcompare {

namespace {

using nlohmann::json;

class OutermostKeys final : public json::json_sax_t {
  public:
    bool null() override { return true; }
    bool boolean(bool /*is*/) override { return true; }
    bool number_integer(std::int64_t /*number*/) override { return true; }
    bool number_unsigned(std::uint64_t /*number*/) override { return true; }
    bool number_float(double /*number*/, const std::string& /*text*/) override { return true; }
    bool string(std::string& /*text*/) override { return true; }
    bool binary(json::binary_t& /*bytes*/) override { return true; }
    bool start_object(std::size_t /*elements*/) override { return start(); }
    bool key(std::string& key) override {
        if (depth_ == 1) {
            keys.push_back(std::move(key));
        }
        return true;
    }
    bool end_object() override { return end(); }
    bool start_array(std::size_t /*elements*/) override {
        return depth_ != 0 && start();  // an array has no keys
    }
    bool end_array() override { return end(); }
    bool parse_error(std::size_t /*position*/, const std::string& /*lastToken*/,
                     const json::exception& /*error*/) override {
        return false;  // where the bytes end
    }

    std::vector<std::string> keys;

  private:
    bool start() {
        ++depth_;
        return true;
    }
    bool end() {
        --depth_;
        return true;
    }

    std::size_t depth_ = 0;
};

}  // namespace

std::vector<std::string> outermostKeys(std::string_view firstBytes) {
    OutermostKeys events;
    static_cast<void>(json::sax_parse(firstBytes, &events));
    return std::move(events.keys);
}

}  // namespace depcompare
