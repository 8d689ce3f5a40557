// SPDX-License-Identifier: Apache-2.0
// elf_file.h: what a built shared object of this program's width says about itself.
#ifndef BENCH_MEMORY_ELF_FILE_H
#define BENCH_MEMORY_ELF_FILE_H

#include <link.h>

#include <string>
#include <vector>

namespace bench {

// Those of the width of this program.
using elf_address = ElfW(Addr);
using elf_header = ElfW(Ehdr);
using elf_section = ElfW(Shdr);
using elf_segment = ElfW(Phdr);

struct relocation {
    elf_address address;
    uint32_t type;
};

class elf_file {
  public:
    explicit elf_file(const std::string &path);

    [[nodiscard]] size_t size() const { return bytes_.size(); }
    [[nodiscard]] std::vector<relocation> relocations() const;
    // Functions that run at a load.
    [[nodiscard]] size_t constructors() const;
    // Bytes of .data.
    [[nodiscard]] size_t writable_data() const;
    // Whether the loader takes the right to write there away after it has relocated the file.
    [[nodiscard]] bool is_read_only_when_loaded(elf_address address) const;

  private:
    template <typename Type>
    const Type *at(size_t offset) const {
        return reinterpret_cast<const Type *>(bytes_.data() + offset);
    }
    [[nodiscard]] std::vector<elf_section> sections(uint32_t type) const;

    std::string bytes_;
};

}  // namespace bench

#endif
