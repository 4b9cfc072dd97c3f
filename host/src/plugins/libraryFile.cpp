#include "plugins/libraryFile.h"

#include <elf.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <vector>

namespace host {

namespace {

#if defined(__x86_64__)
constexpr Elf64_Half kMachine = EM_X86_64;
#elif defined(__aarch64__)
constexpr Elf64_Half kMachine = EM_AARCH64;
#else
constexpr Elf64_Half kMachine = EM_NONE;
#endif

constexpr const char* kTooShort = "file too short.";
constexpr const char* kDamaged = "the file is damaged.";

/// Entries of the dynamic table that are addresses, with the entry that tells their size where there is one.
struct AddressTag {
    Elf64_Sxword address, size;
};
constexpr AddressTag kAddressTags[] = {{DT_STRTAB, DT_STRSZ},
                                       {DT_SYMTAB, 0},
                                       {DT_HASH, 0},
                                       {DT_GNU_HASH, 0},
                                       {DT_RELA, DT_RELASZ},
                                       {DT_JMPREL, DT_PLTRELSZ},
                                       {DT_INIT_ARRAY, DT_INIT_ARRAYSZ},
                                       {DT_FINI_ARRAY, DT_FINI_ARRAYSZ},
                                       {DT_INIT, 0},
                                       {DT_FINI, 0},
                                       {DT_VERSYM, 0},
                                       {DT_VERNEED, 0},
                                       {DT_VERDEF, 0}};

bool lies(std::uint64_t first, std::uint64_t size, std::uint64_t begin, std::uint64_t whole)
{
    return first >= begin && first - begin <= whole && size <= whole - (first - begin);
}

/// One look at what a file says about itself.
class Inspection {
public:
    explicit Inspection(const std::string& path) : file(path, std::ios::binary | std::ios::ate)
    {
        if (file)
            fileSize = static_cast<std::uint64_t>(file.tellg());
    }

    std::string fault()
    {
        if (!read(0, header))
            return kTooShort;
        const std::string known = headerFault();
        if (!known.empty())
            return known;
        if (!lies(header.e_phoff, std::uint64_t{header.e_phnum} * sizeof(Elf64_Phdr), 0, fileSize) ||
            !lies(header.e_shoff, std::uint64_t{header.e_shnum} * header.e_shentsize, 0, fileSize))
            return kTooShort;
        for (unsigned k = 0; k < header.e_phnum; ++k) {
            Elf64_Phdr segment = {};
            if (!read(header.e_phoff + k * sizeof segment, segment))
                return kTooShort;
            segments.push_back(segment);
        }
        return segmentFault();
    }

private:
    template <class Part>
    bool read(std::uint64_t offset, Part& part)
    {
        if (!lies(offset, sizeof part, 0, fileSize))
            return false;
        file.seekg(static_cast<std::streamoff>(offset));
        return static_cast<bool>(file.read(reinterpret_cast<char*>(&part), sizeof part));
    }

    std::string headerFault() const
    {
        if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0)
            return "it is no shared library.";
        const bool fits = header.e_ident[EI_CLASS] == ELFCLASS64 && header.e_ident[EI_DATA] == ELFDATA2LSB &&
                          header.e_type == ET_DYN && (kMachine == EM_NONE || header.e_machine == kMachine);
        if (!fits)
            return "it is no shared library of this machine.";
        return header.e_phentsize != sizeof(Elf64_Phdr) || header.e_phnum == 0 ? kDamaged : "";
    }

    std::string segmentFault()
    {
        const Elf64_Phdr* dynamic = nullptr;
        for (const Elf64_Phdr& segment : segments) {
            if (segment.p_type == PT_DYNAMIC)
                dynamic = &segment;
            if (segment.p_type != PT_LOAD)
                continue;
            if (!lies(segment.p_offset, segment.p_filesz, 0, fileSize))
                return kTooShort;
            if (segment.p_memsz < segment.p_filesz || segment.p_vaddr > UINT64_MAX - segment.p_memsz)
                return kDamaged;
        }
        return dynamic && dynamicHolds(*dynamic) ? "" : kDamaged;
    }

    /// Whether a range of addresses is part of the library, as it lies in the file or in memory.
    bool isLoaded(std::uint64_t address, std::uint64_t size, bool inFile) const
    {
        return std::any_of(segments.begin(), segments.end(), [&](const Elf64_Phdr& segment) {
            const std::uint64_t whole = inFile ? segment.p_filesz : segment.p_memsz;
            return segment.p_type == PT_LOAD && lies(address, size, segment.p_vaddr, whole);
        });
    }

    bool dynamicHolds(const Elf64_Phdr& place)
    {
        if (!lies(place.p_offset, place.p_filesz, 0, fileSize) ||
            !isLoaded(place.p_vaddr, place.p_filesz, true))
            return false;
        std::vector<Elf64_Dyn> entries;
        for (std::uint64_t at = 0; at + sizeof(Elf64_Dyn) <= place.p_filesz; at += sizeof(Elf64_Dyn)) {
            Elf64_Dyn entry = {};
            if (!read(place.p_offset + at, entry))
                return false;
            if (entry.d_tag == DT_NULL)
                return addressesHold(entries);
            entries.push_back(entry);
        }
        return false; // without an end
    }

    bool addressesHold(const std::vector<Elf64_Dyn>& entries) const
    {
        const auto valueOf = [&](Elf64_Sxword tag) -> const Elf64_Dyn* {
            const auto found = std::find_if(entries.begin(), entries.end(),
                                            [tag](const Elf64_Dyn& entry) { return entry.d_tag == tag; });
            return found == entries.end() ? nullptr : &*found;
        };
        for (const AddressTag& tag : kAddressTags) {
            const Elf64_Dyn* const address = valueOf(tag.address);
            const Elf64_Dyn* const size = tag.size != 0 ? valueOf(tag.size) : nullptr;
            if (address && !isLoaded(address->d_un.d_ptr, size ? size->d_un.d_val : 1, false))
                return false;
        }
        return valueOf(DT_STRTAB) && valueOf(DT_STRSZ) && valueOf(DT_SYMTAB);
    }

    std::ifstream file;
    std::uint64_t fileSize = 0;
    Elf64_Ehdr header = {};
    std::vector<Elf64_Phdr> segments;
};

} // namespace

std::string libraryFault(const std::string& path)
{
    return Inspection(path).fault();
}

} // namespace host
