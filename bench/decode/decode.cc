// SPDX-License-Identifier: Apache-2.0
// decode.cc: what decoding an answer costs, beside the same ports as protobuf messages, as a flatbuffer and as JSON,
// and beside two floors over the same bytes: memcpy, and a plain byte-swap loop.
#include <algorithm>
#include <cstring>
#include <string>

#include "bench/decode/flatbuffers_ports.h"
#include "bench/decode/json_ports.h"
#include "bench/decode/our_answer.h"
#include "bench/support/report.h"
#include "protocol/byte_order.h"
#ifdef BENCH_HAS_PROTOBUF
#include "bench/decode/protobuf_ports.h"
#endif

namespace {

using bench::bytes;
using bench::port_list;
using bench::touch;

// Ports in one answer of a query in pages.
constexpr uint32_t page = 16;

// Names of what takes part.
constexpr auto ours_row = "our answer";
constexpr auto protobuf_row = "protobuf, parsed into a fresh message";
constexpr auto flatbuffers_row = "flatbuffers, verified and read";
constexpr auto json_row = "JSON, parsed and read";

// What is compared: the same bytes copied, and the same bytes swapped word by word.
auto copying(const bytes &from, bytes &to) {
    return [&from, &to] {
        std::memcpy(to.data(), from.data(), to.size());
        touch(to.data());
    };
}

auto swapping(const bytes &from, bytes &to) {
    return [&from, &to] {
        for (size_t i = 0; i + 4 <= to.size(); i += 4) pm::store(&to[i], pm::load_be32(&from[i]));
        touch(to.data());
    };
}

auto parsing(const bytes &base, const void *elements, pm_port_info_t &record) {
    return [&base, elements, &record] {
        pm_parse_port_info(base.data(), elements, &record);
        touch(&record);
    };
}

// A record that crosses the end of a page takes several times longer to copy: these lie where none does.
void measure_one_record(bench::report &report) {
    alignas(512) const auto from = bench::make_ports(1)[0];
    alignas(512) pm_port_info_t to{};
    const bytes base = bench::encode_base_record(from);
    bench::contest contest;
    contest.add("base record without elements", parsing(base, nullptr, to));
    size_t size = sizeof to;
    touch(&size);  // or the compiler copies a size that it knows by an instruction that takes several times longer
    contest.add("memcpy of 388 bytes", [&] {
        std::memcpy(&to, &from, size);
        touch(&to);
    });
    const auto rows = contest.run();
    report.table("one record", "ns", rows);
    report.at_most("base record, beyond 2 x memcpy, ns", rows[0].took.median - 2 * rows[1].took.median, 15);
}

void measure_foreign_elements(bench::report &report) {
    constexpr size_t count = 4000;
    const port_list ports = bench::make_ports(2);
    const bytes base = bench::encode_base_record(ports[0]);
    const bytes elements = bench::encode_elements(ports[1], count);
    bytes copy(elements.size());
    pm_port_info_t record{};
    bench::contest contest;
    contest.add("visit of another port's element", parsing(base, elements.data(), record), count);
    contest.add("memcpy of its 12 bytes", copying(elements, copy), count);
    const auto rows = contest.run();
    report.table("walk", "ns", rows);
    report.at_most("visit of another port's element, ns", rows[0].took.median, sizeof(void *) == 8 ? 3.0 : 3.5);
}

// Decoders of the same ports, and floors over the same bytes, take turns.
class decoding_contest {
  public:
    explicit decoding_contest(uint32_t ports) : ports_(bench::make_ports(ports)), ours_(ports_) {
        add(ours_row, ours_);
    }

    [[nodiscard]] const port_list &ports() const { return ports_; }

    // A decoder must yield the values that were encoded before it is worth timing.
    template <typename Decoder>
    void add(const char *name, Decoder &decoder) {
        decoder.decode();
        const port_list decoded = decoder.ports();
        const size_t size = ports_.size() * sizeof ports_[0];
        bench::require(decoded.size() == ports_.size() && std::memcmp(decoded.data(), ports_.data(), size) == 0, name);
        sizes_.push_back({name, {static_cast<double>(decoder.size()) / units(), 0}});
        add_work(name, [&decoder] {
            decoder.decode();
            touch(&decoder);
        });
    }

    void add_work(const char *name, auto work) { contest_.add(name, work, units()); }

    void run(bench::report &report) {
        bytes copy(ours_.size());
        add_work("memcpy", copying(ours_.payload(), copy));
        add_work("byte swap", swapping(ours_.payload(), copy));
        rows_ = contest_.run();
        const std::string title = std::to_string(ports_.size()) + " ports with 12 elements each";
        report.table(title, "ns a port", rows_);
        report.list(title + ", encoded", "bytes a port", sizes_);
    }

    // How many times longer one took than the other.
    [[nodiscard]] double ratio(const char *name, const char *to) const { return median_of(name) / median_of(to); }

  private:
    [[nodiscard]] double units() const { return static_cast<double>(ports_.size()); }

    [[nodiscard]] double median_of(const std::string &name) const {
        return std::ranges::find(rows_, name, &bench::result::name)->took.median;
    }

    port_list ports_;
    bench::our_answer ours_;
    bench::contest contest_;
    std::vector<bench::result> rows_;
    std::vector<bench::result> sizes_;
};

void measure_ports(bench::report &report, uint32_t ports) {
    decoding_contest contest(ports);
#ifdef BENCH_HAS_PROTOBUF
    bench::protobuf_ports protobuf(contest.ports());
    contest.add(protobuf_row, protobuf);
    contest.add_work("protobuf, the same on an arena", [&protobuf] { protobuf.decode_on_arena(); });
    contest.add_work("protobuf, parsed into a message used again", [&protobuf] { protobuf.decode_again(); });
#endif
    bench::flatbuffers_ports flatbuffers(contest.ports());
    contest.add(flatbuffers_row, flatbuffers);
    bench::json_ports json(contest.ports());
    contest.add(json_row, json);
    contest.run(report);
#ifdef BENCH_HAS_PROTOBUF
    if (ports == 1) report.at_least("protobuf, of ours, one port", contest.ratio(protobuf_row, ours_row), 4);
    if (ports == page) report.at_most("ours, of protobuf, a page", contest.ratio(ours_row, protobuf_row), 1.5);
#endif
    if (ports == page) report.at_least("JSON, of ours, a page", contest.ratio(json_row, ours_row), 20);
}

}  // namespace

int main(int argc, char **argv) {
    bench::report report(argc, argv, "decoding");
    measure_one_record(report);
    measure_foreign_elements(report);
    for (const uint32_t ports : {1u, page, 48u, 528u}) measure_ports(report, ports);
    report.write();
    return 0;
}
