// SPDX-License-Identifier: Apache-2.0
#include "bench/memory/elf_file.h"

#include <fstream>
#include <iterator>

#include "bench/support/measure.h"

namespace bench {

namespace {

std::string content_of(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    require(file.good(), path.c_str());
    return {std::istreambuf_iterator<char>(file), {}};
}

#if __SIZEOF_POINTER__ == 8
using relocation_entry = Elf64_Rela;
constexpr uint32_t relocation_section = SHT_RELA;
constexpr uint32_t type_of(const relocation_entry &entry) { return static_cast<uint32_t>(ELF64_R_TYPE(entry.r_info)); }
#else
using relocation_entry = Elf32_Rel;
constexpr uint32_t relocation_section = SHT_REL;
constexpr uint32_t type_of(const relocation_entry &entry) { return ELF32_R_TYPE(entry.r_info); }
#endif

}  // namespace

elf_file::elf_file(const std::string &path) : bytes_(content_of(path)) {}

std::vector<elf_section> elf_file::sections(uint32_t type) const {
    const auto &header = *at<elf_header>(0);
    std::vector<elf_section> found;
    for (size_t i = 0; i < header.e_shnum; ++i) {
        const auto &section = at<elf_section>(header.e_shoff)[i];
        if (section.sh_type == type) found.push_back(section);
    }
    return found;
}

std::vector<relocation> elf_file::relocations() const {
    std::vector<relocation> all;
    for (const auto &section : sections(relocation_section)) {
        const auto *const entries = at<relocation_entry>(section.sh_offset);
        for (size_t i = 0; i < section.sh_size / sizeof *entries; ++i)
            all.push_back({entries[i].r_offset, type_of(entries[i])});
    }
    return all;
}

size_t elf_file::constructors() const {
    size_t size = 0;
    for (const auto &section : sections(SHT_INIT_ARRAY)) size += section.sh_size;
    return size / sizeof(void *);
}

size_t elf_file::writable_data() const {
    size_t size = 0;
    for (const auto &section : sections(SHT_PROGBITS))
        if ((section.sh_flags & SHF_WRITE) != 0 && !is_read_only_when_loaded(section.sh_addr)) size += section.sh_size;
    return size;
}

bool elf_file::is_read_only_when_loaded(elf_address address) const {
    const auto &header = *at<elf_header>(0);
    for (size_t i = 0; i < header.e_phnum; ++i) {
        const auto &segment = at<elf_segment>(header.e_phoff)[i];
        if (segment.p_type == PT_GNU_RELRO && address - segment.p_vaddr < segment.p_memsz) return true;
    }
    return false;
}

}  // namespace bench
