#include "plugin/boundary/faults.h"

#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <link.h>
#include <new>
#include <unwind.h>

namespace testing_support {

namespace {

/// The addresses of a library's code.
struct Range {
    std::uintptr_t from = 0, to = 0;
    bool has(std::uintptr_t address) const { return address >= from && address < to; }
};

struct Wanted {
    std::string end;
    Range found;
};

int findLibrary(dl_phdr_info* info, std::size_t, void* data)
{
    auto& wanted = *static_cast<Wanted*>(data);
    const std::string name = info->dlpi_name;
    if (name.size() < wanted.end.size() ||
        name.compare(name.size() - wanted.end.size(), std::string::npos, wanted.end) != 0)
        return 0;
    for (int at = 0; at < info->dlpi_phnum; ++at) {
        const auto& header = info->dlpi_phdr[at];
        if (header.p_type != PT_LOAD || (header.p_flags & PF_X) == 0)
            continue;
        wanted.found.from = info->dlpi_addr + header.p_vaddr;
        wanted.found.to = wanted.found.from + header.p_memsz;
    }
    return 1;
}

Range rangeOf(const std::string& end)
{
    Wanted wanted{end, {}};
    dl_iterate_phdr(findLibrary, &wanted);
    return wanted.found;
}

/// Plain data: operator new looks at it before anything else is made.
struct Watch {
    bool on = false, busy = false;
    FaultKind kind = FaultKind::kAllocation;
    std::size_t fails = 0, count = 0;
    Range library, host;
};

Watch& watch()
{
    static Watch state;
    return state;
}

bool isNext()
{
    Watch& state = watch();
    return ++state.count == state.fails;
}

enum class Owner { kUnknown, kLibrary, kHost };

_Unwind_Reason_Code lookAtFrame(_Unwind_Context* context, void* data)
{
    const std::uintptr_t address = _Unwind_GetIP(context);
    auto& owner = *static_cast<Owner*>(data);
    if (watch().library.has(address))
        owner = Owner::kLibrary;
    else if (watch().host.has(address))
        owner = Owner::kHost;
    return owner == Owner::kUnknown ? _URC_NO_REASON : _URC_END_OF_STACK;
}

/// Whether the innermost code of the library or the host that asks for memory is the library's. What is
/// asked from templates of the standard library counts for who called them.
bool allocationFails()
{
    Watch& state = watch();
    if (!state.on || state.busy || state.kind != FaultKind::kAllocation)
        return false;
    state.busy = true;
    Owner owner = Owner::kUnknown;
    _Unwind_Backtrace(lookAtFrame, &owner);
    state.busy = false;
    return owner == Owner::kLibrary && isNext();
}

} // namespace

FaultWatch::FaultWatch(const std::string& library, FaultKind kind, std::size_t fails)
{
    Watch& state = watch();
    state = Watch();
    state.kind = kind;
    state.fails = fails;
    state.library = rangeOf(library);
    state.host = rangeOf("libmayahost.so");
    if (state.library.to == 0 || state.host.to == 0)
        std::abort(); // nothing would ever be counted
    state.on = true;
}

FaultWatch::~FaultWatch()
{
    watch().on = false;
}

std::size_t FaultWatch::count() const
{
    return watch().count;
}

bool FaultWatch::hasFailed() const
{
    return watch().fails != 0 && watch().count >= watch().fails;
}

bool interfaceCallFails(const void* caller)
{
    Watch& state = watch();
    return state.on && state.kind == FaultKind::kInterface &&
           state.library.has(reinterpret_cast<std::uintptr_t>(caller)) && isNext();
}

__attribute__((noinline)) void* realFunction()
{
    Dl_info info;
    if (dladdr(__builtin_return_address(0), &info) == 0 || info.dli_sname == nullptr)
        std::abort();
    void* const function = dlsym(RTLD_NEXT, info.dli_sname);
    if (function == nullptr)
        std::abort();
    return function;
}

} // namespace testing_support

void* operator new(std::size_t size)
{
    if (testing_support::allocationFails())
        throw std::bad_alloc();
    void* const memory = std::malloc(size > 0 ? size : 1);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return testing_support::allocationFails() ? nullptr : std::malloc(size > 0 ? size : 1);
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& none) noexcept
{
    return operator new(size, none);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}
