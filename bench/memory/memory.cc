// SPDX-License-Identifier: Apache-2.0
// memory.cc: what the library costs a process: its file, its load, and the heap of a large query.
#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "bench/decode/our_answer.h"
#include "bench/memory/elf_file.h"
#include "bench/memory/heap_meter.h"
#include "bench/memory/library_files.h"
#include "bench/memory/loads.h"
#include "bench/support/child_process.h"
#include "bench/support/temporary_runtime_dir.h"
#include "platform_dev/mts_dev.h"
#include "platform_dev/mts_service.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using bench::require;
using bench::result;

result count_of(std::string name, size_t count) { return {std::move(name), {static_cast<double>(count), 0}}; }

// The two machines number these alike.
static_assert(R_386_RELATIVE == R_X86_64_RELATIVE && R_386_GLOB_DAT == R_X86_64_GLOB_DAT &&
              R_386_JMP_SLOT == R_X86_64_JUMP_SLOT && R_386_32 == R_X86_64_64);
struct relocation_kind {
    uint32_t type;
    const char *name;
};
constexpr relocation_kind relocation_kinds[] = {
    {R_386_RELATIVE, "relocations: of addresses in the library itself"},
    {R_386_JMP_SLOT, "relocations: of functions that it calls, looked up by name"},
    {R_386_GLOB_DAT, "relocations: of other things, looked up by name"},
    {R_386_32, "relocations: of words in tables, looked up by name"},
};

std::vector<result> relocations_by_kind(const std::vector<bench::relocation> &all) {
    std::vector<result> rows;
    size_t named = 0;
    for (const relocation_kind &kind : relocation_kinds) {
        const auto count = static_cast<size_t>(std::ranges::count(all, kind.type, &bench::relocation::type));
        rows.push_back(count_of(kind.name, count));
        named += count;
    }
    rows.push_back(count_of("relocations: others", all.size() - named));
    return rows;
}

// Words that point into the library, so of tables with texts too, and can be written to in a running program.
size_t writable_addresses(const bench::elf_file &file) {
    return static_cast<size_t>(std::ranges::count_if(file.relocations(), [&](const bench::relocation &each) {
        return !file.is_read_only_when_loaded(each.address);
    }));
}

void measure_file(bench::report &report) {
    const bench::stripped_copy stripped(bench::our_library);
    const bench::elf_file library(stripped.path());
    const size_t constructors = library.constructors();
    const size_t addresses = writable_addresses(library);
    std::vector<result> rows = {count_of("size when stripped, bytes", library.size()),
                                count_of("static constructors", constructors),
                                count_of("addresses that stay writable", addresses),
                                count_of("bytes of initialized data that stay writable", library.writable_data())};
    for (result &row : relocations_by_kind(library.relocations())) rows.push_back(std::move(row));
    report.list("the shared object", "", rows);

    if (sizeof(void *) == 4) report.at_most("size when stripped, bytes", static_cast<double>(library.size()), 100'000);
    report.at_most("static constructors", static_cast<double>(constructors), 0);
    report.at_most("addresses that stay writable", static_cast<double>(addresses), 0);
}

constexpr uint32_t full_chassis = 528;

mts_server_t *open_server(bench::our_answer &answer) {
    const auto reply_with = [](void *context, const mts_request_t *, mts_reply_t *reply) {
        const auto &of = *static_cast<bench::our_answer *>(context);
        std::memcpy(mts_reply_payload(reply, static_cast<uint32_t>(of.size())), of.payload().data(), of.size());
    };
    mts_server_t *const server = mts_server_create();
    require(server != nullptr, "mts_server_create");
    require(mts_server_add_service(server, PM_NODE_SUPERVISOR, PM_SAP_PORT_MANAGER, reply_with, &answer) == 0,
            "mts_server_add_service");
    return server;
}

void query_all_ports(mts_handle_t handle) {
    mts_msg_t answer;
    uint32_t count = 0;
    pm_port_info_t *records = nullptr;
    require(pm_get_port_info_range(handle, 0, UINT32_MAX, &answer) == 0, "pm_get_port_info_range");
    require(pm_parse_get_port_info(&answer, &count, &records) == 0 && count == full_chassis, "pm_parse_get_port_info");
    require(mts_drop(handle, &answer) == 0, "mts_drop");
    std::free(records);
}

void measure_heap(bench::report &report) {
    const bench::temporary_runtime_dir directory;
    bench::our_answer answer(bench::make_ports(full_chassis));
    mts_server_t *const server = open_server(answer);  // before the fork, so that it can be reached from here on
    const bench::child_process serving([server] { mts_server_run(server); });

    bench::start_heap_meter();
    const mts_handle_t handle = mts_dev_open();
    query_all_ports(handle);
    const bench::heap_use first = bench::read_heap_meter();
    bench::start_heap_meter();
    query_all_ports(handle);
    const bench::heap_use second = bench::read_heap_meter();
    report.list("heap of a query of 528 ports with 12 elements each", "",
                {count_of("bytes at most at one time, with a handle opened for it", first.bytes_at_most),
                 count_of("blocks taken, with a handle opened for it", first.blocks),
                 count_of("bytes at most at one time, once more with this handle", second.bytes_at_most),
                 count_of("blocks taken, once more with this handle", second.blocks),
                 count_of("size of the records", full_chassis * sizeof(pm_port_info_t)),
                 count_of("size of the answer's payload", answer.size())});
    mts_dev_close(handle);
    mts_server_destroy(server);
}

}  // namespace

int main(int argc, char **argv) {
    bench::report report(argc, argv, "memory");
    measure_file(report);
    bench::measure_load_time(report);
    bench::measure_resident_size(report);
    measure_heap(report);
    report.write();
    return 0;
}
