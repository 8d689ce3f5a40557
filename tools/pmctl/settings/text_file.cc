// SPDX-License-Identifier: Apache-2.0
#include "settings/text_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include <fmt/core.h>

#include <system_error>

#include "failure.h"

namespace pmctl {
namespace {

constexpr size_t most_bytes = 1024UL * 1024;

// Standard input stays open, whoever else reads it.
class descriptor {
  public:
    explicit descriptor(const std::string &path)
        : is_own_(path != "-"), number_(is_own_ ? open(path.c_str(), O_RDONLY | O_CLOEXEC) : STDIN_FILENO) {}
    ~descriptor() {
        if (is_own_ && number_ >= 0) close(number_);
    }
    descriptor(const descriptor &) = delete;
    descriptor &operator=(const descriptor &) = delete;

    [[nodiscard]] int get() const { return number_; }

  private:
    bool is_own_;
    int number_;
};

[[noreturn]] void refuse(const std::string &name, int error) {
    throw std::runtime_error(fmt::format("cannot read {}: {}", name, std::generic_category().message(error)));
}

}  // namespace

text_file read_text_file(const std::string &path) {
    text_file file{path == "-" ? "standard input" : path, {}};
    const descriptor source(path);
    if (source.get() < 0) refuse(file.name, errno);
    std::array<char, 65536> bytes;
    for (ssize_t length = 1; length != 0;) {
        length = read(source.get(), bytes.data(), bytes.size());
        if (length < 0 && errno != EINTR) refuse(file.name, errno);
        if (length > 0) file.text.append(bytes.data(), static_cast<size_t>(length));
        if (file.text.size() > most_bytes)
            throw usage_error(fmt::format("{} is longer than {} bytes", file.name, most_bytes));
    }
    return file;
}

}  // namespace pmctl
