#include "platform/export/compoundfile.h"

#include <vector>

#include "platform/export/biff.h"
#include "platform/export/cells.h"
#include "platform/runtime/unicode.h"

namespace veldona::exports {

namespace {

constexpr std::size_t kSector = 512;
constexpr std::size_t kLeastStream = 4096; // shorter ones would lie in sectors of another kind
constexpr std::size_t kPlacesInSector = kSector / 4;
constexpr std::size_t kPlacesInHeader = 109;
constexpr std::uint32_t kFree = 0xFFFFFFFF, kEnd = 0xFFFFFFFE, kTableSector = 0xFFFFFFFD,
                        kListSector = 0xFFFFFFFC;

std::size_t sectorsFor(std::size_t count, std::size_t inOne) {
    return (count + inOne - 1) / inOne;
}

// Where everything lies: the stream, one directory sector, the allocation table, the list of its sectors.
struct Plan {
    std::size_t stream = 0, table = 0, list = 0;
    [[nodiscard]] std::size_t directoryAt() const { return stream; }
    [[nodiscard]] std::size_t tableAt() const { return stream + 1; }
    [[nodiscard]] std::size_t listAt() const { return tableAt() + table; }
    [[nodiscard]] std::size_t total() const { return listAt() + list; }
};

// The table counts its own sectors, so it grows until it holds all.
Plan planFor(std::size_t streamSectors) {
    Plan plan{streamSectors, 1, 0};
    while (plan.table * kPlacesInSector < plan.total()) {
        ++plan.table;
        const std::size_t beyond = plan.table > kPlacesInHeader ? plan.table - kPlacesInHeader : 0;
        plan.list = sectorsFor(beyond, kPlacesInSector - 1);
    }
    return plan;
}

std::uint32_t number(std::size_t value) {
    return static_cast<std::uint32_t>(value);
}

LittleEndian header(const Plan& plan) {
    LittleEndian out;
    out.raw("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1").zeros(16);
    out.word(0x3E).word(3).word(0xFFFE).word(9).word(6).zeros(6); // version 3; sectors of 2^9 and 2^6 bytes
    out.dword(0).dword(number(plan.table)).dword(number(plan.directoryAt())).dword(0);
    out.dword(kLeastStream).dword(kEnd).dword(0);
    out.dword(plan.list ? number(plan.listAt()) : kEnd).dword(number(plan.list));
    for (std::size_t i = 0; i < kPlacesInHeader; ++i)
        out.dword(i < plan.table ? number(plan.tableAt() + i) : kFree);
    return out;
}

enum class EntryKind { Unused = 0, Stream = 2, Root = 5 };

void appendEntry(LittleEndian& out, EntryKind kind, const std::string& name, std::uint32_t child,
                 std::uint32_t start, std::size_t size) {
    const std::u16string units = utf16Of(name);
    out.units(units).zeros(64 - units.size() * 2);
    out.word(kind == EntryKind::Unused ? 0 : static_cast<unsigned>(units.size() * 2 + 2));
    out.byte(static_cast<unsigned>(kind)).byte(1).dword(kFree).dword(kFree).dword(child);
    out.zeros(36).dword(start).dword(number(size)).dword(0);
}

LittleEndian directory(const std::string& name, std::size_t size) {
    LittleEndian out;
    appendEntry(out, EntryKind::Root, "Root Entry", 1, kEnd, 0);
    appendEntry(out, EntryKind::Stream, name, kFree, 0, size);
    for (int i = 0; i < 2; ++i)
        appendEntry(out, EntryKind::Unused, "", kFree, 0, 0);
    return out;
}

LittleEndian table(const Plan& plan) {
    LittleEndian out;
    for (std::size_t i = 0; i + 1 < plan.stream; ++i)
        out.dword(number(i + 1));
    out.dword(kEnd).dword(kEnd); // of the stream, of the directory
    for (std::size_t i = 0; i < plan.table; ++i)
        out.dword(kTableSector);
    for (std::size_t i = 0; i < plan.list; ++i)
        out.dword(kListSector);
    for (std::size_t i = plan.total(); i < plan.table * kPlacesInSector; ++i)
        out.dword(kFree);
    return out;
}

LittleEndian list(const Plan& plan) {
    LittleEndian out;
    std::size_t next = kPlacesInHeader;
    for (std::size_t i = 0; i < plan.list; ++i) {
        for (std::size_t k = 0; k + 1 < kPlacesInSector; ++k, ++next)
            out.dword(next < plan.table ? number(plan.tableAt() + next) : kFree);
        out.dword(i + 1 < plan.list ? number(plan.listAt() + i + 1) : kEnd);
    }
    return out;
}

} // namespace

std::string compoundFile(const std::string& streamName, std::string stream) {
    if (stream.size() < kLeastStream) stream.resize(kLeastStream);
    const std::size_t size = stream.size();
    const Plan plan = planFor(sectorsFor(size, kSector));
    stream.resize(plan.stream * kSector);
    return header(plan).bytes() + stream + directory(streamName, size).bytes() + table(plan).bytes() +
           list(plan).bytes();
}

} // namespace veldona::exports
