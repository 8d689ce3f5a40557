// SPDX-License-Identifier: Apache-2.0
#include "man_in_the_middle.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <array>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <list>
#include <optional>

#include "protocol/byte_order.h"

using transport_test::header_of;
using transport_test::raw_connect;
using transport_test::raw_header;
using transport_test::raw_service;
using transport_test::raw_socket;

namespace faults {

// Lies in memory that both processes have. What the test says is there before it asks the switch anything.
struct orders {
    std::atomic<bool> ready;
    std::atomic<decltype(misdeed::commit)> commit;
    std::atomic<uint32_t> number;
    std::atomic<uint32_t> opcode;
    std::atomic<uint32_t> committed;
    std::atomic<uint32_t> answer_size;
    std::array<std::atomic<uint32_t>, 2> answer_words;
    std::atomic<uint32_t> answer_sap;
};

namespace {

constexpr const char *of_the_switch = ".switch";

// The next request or answer, with its payload wherever that travels; nothing when the other side closed.
std::optional<answer_frame> receive(const raw_socket &from) {
    std::string packet = from.receive();
    if (packet.size() < sizeof(raw_header)) return std::nullopt;
    answer_frame frame{header_of(packet), std::move(packet)};
    frame.payload.resize(frame.header.payload_size);
    if (frame.header.place == 0) return frame;
    const int file = from.receive_descriptor();
    EXPECT_EQ(pread(file, frame.payload.data(), frame.payload.size(), 0), static_cast<ssize_t>(frame.payload.size()));
    close(file);
    frame.header.place = 0;
    return frame;
}

// What the process in the middle does.
class relay_process {
  public:
    relay_process(const std::string &directory, orders &orders) : orders_(orders) {
        for (const auto &entry : std::filesystem::directory_iterator(directory)) {
            if (entry.is_socket()) places_.emplace_back(entry.path());
        }
        for (place &taken : places_) {
            std::filesystem::rename(taken.path, taken.path + of_the_switch);
            taken.listener.emplace(taken.path);
        }
        orders_.ready = true;
    }

    [[noreturn]] void run() {
        for (;;) {
            std::vector<pollfd> descriptors;
            for (const place &taken : places_) descriptors.push_back({taken.listener->get(), POLLIN, 0});
            for (const relay &open : relays_) descriptors.push_back({open.client.get(), POLLIN, 0});
            poll(descriptors.data(), descriptors.size(), -1);
            auto at = descriptors.begin() + static_cast<std::ptrdiff_t>(places_.size());
            std::erase_if(relays_, [&](relay &open) { return (at++)->revents != 0 && !pass_on(open); });
            orders_.committed = committed_;
            at = descriptors.begin();
            for (const place &taken : places_) {
                if ((at++)->revents != 0) accept(taken);
            }
        }
    }

  private:
    // Of one service.
    struct place {
        explicit place(std::string of) : path(std::move(of)) {}
        [[nodiscard]] uint32_t sap() const {
            return static_cast<uint32_t>(std::stoul(path.substr(path.find_last_of('-') + 1)));
        }
        std::string path;
        std::optional<raw_service> listener;
    };

    // One connection of a client.
    struct relay {
        uint32_t sap;
        raw_socket client;
        raw_socket service;
        std::optional<answer_frame> late;  // goes out before the next answer
    };

    void accept(const place &at) {
        relays_.push_back({at.sap(), at.listener->accept(), raw_connect(at.path + of_the_switch), std::nullopt});
    }

    // Returns false when the connection is done.
    bool pass_on(relay &open) {
        const std::optional<answer_frame> request = receive(open.client);
        if (!request) return false;
        if (open.late) send(open.client, *open.late);
        open.late.reset();
        send(open.service, *request);
        const std::optional<answer_frame> answer = receive(open.service);
        EXPECT_TRUE(answer) << "the switch closed";
        return answer && deliver(open, *answer);
    }

    bool deliver(relay &open, const answer_frame &good) {
        note(open, good);
        const auto commit = good.header.opcode == orders_.opcode ? orders_.commit.exchange(nullptr) : nullptr;
        if (commit == nullptr) {
            send(open.client, good);
            return true;
        }
        ++committed_;
        const afterwards then = commit(open.client, good, orders_.number);
        if (then == afterwards::answers_late) open.late = good;
        return then != afterwards::closes;
    }

    void note(const relay &open, const answer_frame &good) const {
        orders_.answer_sap = open.sap;
        orders_.answer_size = good.header.payload_size;
        std::array<char, 2 * sizeof(uint32_t)> words{};
        good.payload.copy(words.data(), words.size());
        for (size_t i = 0; i < orders_.answer_words.size(); ++i)
            orders_.answer_words[i] = pm::load_be32(reinterpret_cast<const uint8_t *>(words.data()) + 4 * i);
    }

    orders &orders_;
    std::list<place> places_;
    std::list<relay> relays_;
    uint32_t committed_ = 0;
};

}  // namespace

man_in_the_middle::man_in_the_middle(const std::string &directory)
    : orders_(static_cast<orders *>(
          mmap(nullptr, sizeof(orders), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))),
      pid_(fork()) {
    if (pid_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        relay_process(directory, *orders_).run();
    }
    while (!orders_->ready && waitpid(pid_, nullptr, WNOHANG) == 0) usleep(1000);
    EXPECT_TRUE(orders_->ready);
}

man_in_the_middle::~man_in_the_middle() {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
    munmap(orders_, sizeof *orders_);
}

void man_in_the_middle::spoil(uint32_t opcode, const misdeed &spoilt) {
    orders_->opcode = opcode;
    orders_->number = spoilt.number;
    orders_->commit = spoilt.commit;
}

uint32_t man_in_the_middle::committed() const { return orders_->committed; }

uint32_t man_in_the_middle::answer_size() const { return orders_->answer_size; }

uint32_t man_in_the_middle::answer_word(size_t index) const { return orders_->answer_words[index]; }

uint32_t man_in_the_middle::answer_sap() const { return orders_->answer_sap; }

}  // namespace faults
