#include "elf_symbols.h"

#include <elf.h>

#include <cstring>
#include <fstream>
#include <iterator>

namespace pxktest {

std::vector<std::string> definedDynamicSymbols(const std::string& path, std::string& error) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        error = "cannot open " + path;
        return {};
    }
    const std::vector<char> file((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    auto fits = [&](std::size_t off, std::size_t len) { return off <= file.size() && len <= file.size() - off; };
    Elf64_Ehdr eh;
    if (!fits(0, sizeof eh)) {
        error = "too short";
        return {};
    }
    std::memcpy(&eh, file.data(), sizeof eh);
    if (std::memcmp(eh.e_ident, ELFMAG, SELFMAG) != 0 || eh.e_ident[EI_CLASS] != ELFCLASS64) {
        error = "not an ELF64 file";
        return {};
    }
    std::vector<Elf64_Shdr> sections(eh.e_shnum);
    if (!fits(eh.e_shoff, sizeof(Elf64_Shdr) * eh.e_shnum)) {
        error = "bad section table";
        return {};
    }
    std::memcpy(sections.data(), file.data() + eh.e_shoff, sizeof(Elf64_Shdr) * eh.e_shnum);

    std::vector<std::string> names;
    bool found = false;
    for (const Elf64_Shdr& sh : sections) {
        if (sh.sh_type != SHT_DYNSYM) continue;
        found = true;
        if (sh.sh_link >= sections.size()) {
            error = "bad string table link";
            return {};
        }
        const Elf64_Shdr& strtab = sections[sh.sh_link];
        if (!fits(sh.sh_offset, sh.sh_size) || !fits(strtab.sh_offset, strtab.sh_size)) {
            error = "bad symbol table";
            return {};
        }
        for (std::size_t off = 0; off + sizeof(Elf64_Sym) <= sh.sh_size; off += sizeof(Elf64_Sym)) {
            Elf64_Sym sym;
            std::memcpy(&sym, file.data() + sh.sh_offset + off, sizeof sym);
            const unsigned bind = ELF64_ST_BIND(sym.st_info);
            if (sym.st_shndx == SHN_UNDEF || (bind != STB_GLOBAL && bind != STB_WEAK)) continue;
            if (sym.st_name >= strtab.sh_size) continue;
            const char* name = file.data() + strtab.sh_offset + sym.st_name;
            names.emplace_back(name, strnlen(name, strtab.sh_size - sym.st_name));
        }
    }
    if (!found) error = "no dynamic symbol table";
    return names;
}

}  // namespace pxktest
