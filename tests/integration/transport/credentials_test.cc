// SPDX-License-Identifier: Apache-2.0
// Who may ask services, and whose answers are believed.
#include <poll.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>
#include <optional>

#include "platform/cmi.h"
#include "raw_peer.h"
#include "test_service.h"

namespace transport_test {

namespace {

constexpr gid_t group = 62000;
const support::other_user owner{61000, 62010, {}};
const support::other_user member{61001, group, {}};
const support::other_user late_member{61002, 62001, {62002, 62003, group}};
const support::other_user stranger{61003, 62004, {62005, 62006}};

// What a request that must not be sent fails with.
int send_error(mts_handle_t handle) {
    EXPECT_EQ(send_request(handle, echo, "x"), 0u);
    return static_cast<int>(mts_errno_get(handle));
}

class credentials : public transport {
  protected:
    void SetUp() override {
        if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    }

    void share(mode_t mode = 02710) const { give(0, group, mode); }
    void give(uid_t user, gid_t to_group, mode_t mode) const {
        ASSERT_EQ(chown(directory().c_str(), user, to_group), 0);
        ASSERT_EQ(chmod(directory().c_str(), mode), 0);
    }

    // What keeps others away lies open, so that the service has to look at who comes.
    void open_to_all() const {
        ASSERT_EQ(chmod(directory().c_str(), 0755), 0);
        ASSERT_EQ(chmod(socket().c_str(), 0666), 0);
    }

    std::string socket() const { return file("fe000000-43"); }
};

void expect_served() {
    const open_handle handle;
    EXPECT_EQ(exchange(handle, echo, "there"), "there");
}

void expect_kept_out() {
    const open_handle handle;
    EXPECT_EQ(send_error(handle), EACCES);
}

// The service hangs up without having been sent anything.
void expect_closed(const std::string &path) {
    const raw_socket client = raw_connect(path);
    pollfd ended{client.get(), POLLIN, 0};
    constexpr int limit_ms = 5000;
    ASSERT_EQ(poll(&ended, 1, limit_ms), 1);
    EXPECT_EQ(client.receive(), "");
}

TEST_F(credentials, private_directory_keeps_others_out) {
    const service_process service;
    for (const auto &user : {member, stranger}) support::run_as(user, expect_kept_out);
    expect_served();
}

TEST_F(credentials, shared_directory_lets_members_in_and_keeps_others_out) {
    for (const mode_t mode : {0710, 0750, 02710}) {
        share(mode);
        const service_process service;
        for (const auto &user : {member, late_member}) support::run_as(user, expect_served);
        support::run_as(stranger, expect_kept_out);
        expect_served();
    }
}

TEST_F(credentials, service_closes_connections_of_others) {
    for (const mode_t mode : {0700, 02710}) {
        share(mode);
        const service_process service;
        open_to_all();
        support::run_as(stranger, [&] { expect_closed(socket()); });
    }
}

// As long as it lives, what this process starts can open only so many descriptors.
class few_descriptors {
  public:
    explicit few_descriptors(rlim_t limit) {
        EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &before_), 0);
        const rlimit lower{limit, before_.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &lower), 0);
    }
    ~few_descriptors() { setrlimit(RLIMIT_NOFILE, &before_); }

  private:
    rlimit before_{};
};

// The kernel takes the user of a connection from who connects.
std::vector<raw_socket> connect_as(const support::other_user &user, const std::string &path, size_t count) {
    std::vector<raw_socket> clients;
    EXPECT_EQ(setegid(user.gid), 0);
    EXPECT_EQ(seteuid(user.uid), 0);
    while (clients.size() < count) clients.push_back(raw_connect(path));
    EXPECT_EQ(seteuid(0), 0);
    EXPECT_EQ(setegid(0), 0);
    return clients;
}

TEST_F(credentials, member_that_connects_without_end_leaves_room_for_root) {
    share();
    std::optional<few_descriptors> limit(128);
    const service_process service;
    limit.reset();
    const auto clients = connect_as(member, socket(), 200);
    expect_served();
    EXPECT_EQ(clients.back().receive(), "") << "turned away";
}

TEST_F(credentials, service_in_a_private_directory_serves_no_member) {
    share(0700);
    const service_process service;
    open_to_all();
    support::run_as(member, [&] { expect_closed(socket()); });
}

TEST_F(credentials, service_of_another_user_serves_its_user_root_and_members) {
    const support::other_user joined{owner.uid, owner.gid, {group}};
    for (const auto &[mode, server] : {std::pair(02710, owner), std::pair(0710, joined)}) {
        give(owner.uid, group, static_cast<mode_t>(mode));
        const service_process service(&server);
        expect_served();
        for (const auto &user : {owner, member, late_member}) support::run_as(user, expect_served);
        support::run_as(stranger, expect_kept_out);
    }
}

TEST_F(credentials, private_service_of_another_user_serves_root) {
    give(owner.uid, owner.gid, 0700);
    const service_process service(&owner);
    expect_served();
}

TEST_F(credentials, request_tells_who_asks) {
    share();
    const service_process service;
    const auto expect_told = [](const std::string &words) {
        const open_handle handle;
        EXPECT_EQ(exchange(handle, report_client), words);
    };
    support::run_as(member, [&] { expect_told(word(61001) + word(group)); });
    support::run_as(late_member,
                    [&] { expect_told(word(61002) + word(62001) + word(group) + word(62002) + word(62003)); });
}

TEST_F(credentials, request_tells_all_of_many_groups) {
    share();
    const service_process service;
    support::other_user joiner{61004, group, {}};
    std::string words = word(61004) + word(group);
    for (gid_t each = 70000; each < 71000; ++each) {
        joiner.groups.push_back(each);
        words += word(each);
    }
    support::run_as(joiner, [&] {
        const open_handle handle;
        EXPECT_EQ(exchange(handle, report_client), words);
    });
}

// The kernel's word for who asks was given at the connection, and is the same for each request.
TEST_F(credentials, client_stays_who_it_was_when_it_connected) {
    share();
    const service_process service;
    support::run_as({0, 0, {}}, [] {
        const open_handle handle;
        const std::string before = exchange(handle, report_client);
        ASSERT_TRUE(support::become(stranger));
        EXPECT_EQ(exchange(handle, report_client), before);
    });
}

// A service of the stranger's at the place of the right one: the kernel tells who began to listen.
class impostor {
  public:
    explicit impostor(const std::string &path) : listener_(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0)) {
        const sockaddr_un address = raw_address(path);
        EXPECT_EQ(bind(listener_.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
        support::run_as(stranger, [this] { EXPECT_EQ(listen(listener_.get(), 8), 0); });
    }

  private:
    raw_socket listener_;
};

TEST_F(credentials, impostor_is_not_asked) {
    share();
    const impostor liar(socket());
    ASSERT_EQ(chmod(socket().c_str(), 0666), 0);
    const auto expect_doubt = [] {
        const open_handle handle;
        EXPECT_EQ(send_error(handle), EPERM);
        void *response = nullptr;
        uint32_t length = 0;
        EXPECT_EQ(cmi_req_resp(echo, 1, nullptr, &response, &length, 0, 0, sap, handle, 10),
                  static_cast<uint32_t>(EPERM));
    };
    expect_doubt();
    support::run_as(member, expect_doubt);
}

// Also root is none: it is the owner of the directory who serves there.
TEST_F(credentials, root_is_not_believed_in_the_directory_of_another_user) {
    give(owner.uid, group, 0710);
    const raw_service service(socket());
    ASSERT_EQ(chmod(socket().c_str(), 0666), 0);
    support::run_as(owner, [] {
        const open_handle handle;
        EXPECT_EQ(send_error(handle), EPERM);
    });
}

TEST_F(credentials, impostor_is_not_asked_when_it_follows_the_service) {
    share();
    const open_handle handle;
    {
        const service_process service;
        EXPECT_EQ(exchange(handle, echo, "there"), "there");
    }
    std::filesystem::remove(socket());
    const impostor liar(socket());
    EXPECT_EQ(send_error(handle), EPERM);
}

TEST_F(credentials, answer_of_the_right_user_that_was_not_asked_is_refused) {
    give(owner.uid, group, 0710);
    std::filesystem::remove(socket());
    const raw_socket asked(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    const raw_socket liar(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    for (const auto &[listener, path] :
         {std::pair(asked.get(), socket()), std::pair(liar.get(), file("fe000000-44"))}) {
        const sockaddr_un address = raw_address(path);
        ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
        support::run_as(owner, [fd = listener] { EXPECT_EQ(listen(fd, 8), 0); });
    }
    const open_handle handle;
    const uint32_t token = send_request(handle, echo, "x", 43);
    const uint32_t bait = send_request(handle, echo, "x", 44);
    ASSERT_NE(token, 0u);
    ASSERT_NE(bait, 0u);
    raw_header answer;
    answer.kind = 2;
    answer.token = token;
    raw_socket(accept4(liar.get(), nullptr, nullptr, SOCK_CLOEXEC)).send(bytes_of(answer));
    EXPECT_EQ(receive_error(handle, bait), static_cast<uint32_t>(EPROTO));
    raw_socket(accept4(asked.get(), nullptr, nullptr, SOCK_CLOEXEC)).send(bytes_of(answer));
    EXPECT_EQ(receive_answer(handle, token), "");
}

}  // namespace

}  // namespace transport_test
