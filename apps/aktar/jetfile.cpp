#include "apps/aktar/jetfile.h"

#include <mdbtools.h>

#include <cmath>
#include <cstring>
#include <optional>
#include <string_view>

#include "apps/aktar/jettext.h"

namespace veldona::aktar {
namespace {

constexpr std::size_t kPageSize = MDB_PGSIZE;
constexpr std::size_t kCatalogPage = 2;

template <class T> T numberAt(const void* bytes) {
    T number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

// Days since day zero; before it the time of day still counts forward.
std::optional<Value> dateOf(double days) {
    constexpr double kFirst = -657434, kBehindLast = 2958466; // 1.1.100 to 31.12.9999
    if (!(days >= kFirst && days < kBehindLast)) return std::nullopt;
    const double day = std::trunc(days);
    const double seconds = std::round(std::abs(days - day) * 86400);
    return DateTime::ofSeconds(static_cast<std::int64_t>(day) * 86400 + static_cast<std::int64_t>(seconds));
}

std::optional<Value> numberOf(double number) {
    if (!std::isfinite(number)) return std::nullopt;
    return number;
}

std::optional<Value> textOf(std::string_view bytes) {
    std::optional<std::string> text = decodeJetText(bytes);
    if (!text) return std::nullopt;
    return std::move(*text);
}

std::size_t sizeOfFixed(int type) {
    switch (type) {
    case MDB_BYTE:
        return 1;
    case MDB_INT:
        return 2;
    case MDB_LONGINT:
    case MDB_FLOAT:
        return 4;
    case MDB_MONEY:
    case MDB_DOUBLE:
    case MDB_DATETIME:
        return 8;
    default:
        return 0;
    }
}

// A long text stands in its row, in one row of another page, or in a chain of such rows.
class LongText {
public:
    LongText(MdbHandle* mdb, std::string_view place) : mdb_(mdb), place_(place) {}

    std::optional<std::string> bytes() const {
        if (place_.size() < MDB_MEMO_OVERHEAD) return std::nullopt;
        const auto head = numberAt<std::uint32_t>(place_.data());
        const std::size_t length = head & 0x3FFFFFFF;
        std::optional<std::string> all;
        if ((head & 0x80000000) != 0)
            all = std::string(place_.substr(MDB_MEMO_OVERHEAD));
        else if ((head & 0x40000000) != 0)
            all = piece(numberAt<std::uint32_t>(place_.data() + 4));
        else
            all = chain(numberAt<std::uint32_t>(place_.data() + 4), length);
        if (!all || all->size() < length) return std::nullopt;
        return all->substr(0, length);
    }

private:
    std::optional<std::string> piece(std::uint32_t where) const {
        void* page = nullptr;
        int offset = 0;
        std::size_t size = 0;
        if (mdb_find_pg_row(mdb_, static_cast<int>(where), &page, &offset, &size) != 0) return std::nullopt;
        if (offset < 0 || static_cast<std::size_t>(offset) + size > kPageSize) return std::nullopt;
        return std::string(static_cast<const char*>(page) + offset, size);
    }
    std::optional<std::string> chain(std::uint32_t where, std::size_t length) const {
        std::string all;
        while (where != 0) {
            const std::optional<std::string> part = piece(where);
            if (!part || part->size() <= 4 || all.size() >= length) return std::nullopt;
            where = numberAt<std::uint32_t>(part->data());
            all.append(*part, 4);
        }
        return all;
    }

    MdbHandle* mdb_;
    std::string_view place_;
};

// Nothing where the bytes are no value of the column's type.
std::optional<Value> valueOf(MdbHandle* mdb, const MdbColumn& column, std::string_view bytes) {
    const std::size_t fixed = sizeOfFixed(column.col_type);
    if (fixed != 0 && bytes.size() != fixed) return std::nullopt;
    switch (column.col_type) {
    case MDB_BYTE:
        return static_cast<int>(numberAt<std::uint8_t>(bytes.data()));
    case MDB_INT:
        return static_cast<int>(numberAt<std::int16_t>(bytes.data()));
    case MDB_LONGINT:
        return static_cast<int>(numberAt<std::int32_t>(bytes.data()));
    case MDB_MONEY:
        return static_cast<double>(numberAt<std::int64_t>(bytes.data())) / 10'000;
    case MDB_FLOAT:
        return numberOf(numberAt<float>(bytes.data()));
    case MDB_DOUBLE:
        return numberOf(numberAt<double>(bytes.data()));
    case MDB_DATETIME:
        return dateOf(numberAt<double>(bytes.data()));
    case MDB_TEXT:
        return textOf(bytes);
    case MDB_MEMO: {
        const std::optional<std::string> text = LongText(mdb, bytes).bytes();
        return text ? textOf(*text) : std::nullopt;
    }
    default:
        return Value();
    }
}

bool isReadable(int type) {
    return type == MDB_BOOL || type == MDB_TEXT || type == MDB_MEMO || sizeOfFixed(type) != 0;
}

struct TableCloser {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};

} // namespace

struct JetFile::Handle {
    explicit Handle(const std::string& path) : mdb(mdb_open(path.c_str(), MDB_NOFLAGS)) {}
    ~Handle() {
        if (mdb != nullptr) mdb_close(mdb);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    MdbHandle* mdb;
};

// One table being walked.
class JetFile::Reading {
public:
    Reading(MdbCatalogEntry* entry, const std::string& path) : path_(path), name_(entry->object_name) {
        mdb_ = entry->mdb;
        page_ = entry->table_pg;
        table_.reset(mdb_read_table(entry));
        if (!table_) fail("tablosunun tanımı okunamıyor");
        if (mdb_read_columns(table_.get()) == nullptr || table_->columns == nullptr ||
            table_->columns->len != table_->num_cols)
            fail("tablosunun alanları okunamıyor");
    }

    [[nodiscard]] std::uint64_t rows() const { return table_->num_rows; }
    [[nodiscard]] std::vector<JetColumn> columns() const {
        std::vector<JetColumn> all;
        for (unsigned i = 0; i < table_->num_cols; ++i)
            all.push_back({column(i).name, isReadable(column(i).col_type)});
        return all;
    }

    void walk(const RowTaker& take) {
        mdb_rewind_table(table_.get());
        std::vector<Value> row(table_->num_cols);
        std::uint64_t came = 0;
        while (mdb_fetch_row(table_.get()) != 0) {
            if (++came > rows()) break;
            checkPage();
            for (unsigned i = 0; i < table_->num_cols; ++i)
                row[i] = value(column(i), came);
            take(row);
        }
        if (came == rows()) return;
        fail("tablosu " + std::to_string(rows()) + " satır tuttuğunu söylüyor, dosyadan " +
             (came > rows() ? "daha çok satır" : std::to_string(came) + " satır") + " okunuyor");
    }

private:
    [[noreturn]] void fail(const std::string& what) const {
        throw Damaged(path_ + " bozuk: " + name_ + ' ' + what + ". Hiçbir şey aktarılmadı.");
    }
    [[nodiscard]] const MdbColumn& column(unsigned index) const {
        return *static_cast<const MdbColumn*>(g_ptr_array_index(table_->columns, index));
    }
    void checkPage() const {
        const bool own = mdb_->pg_buf[0] == MDB_PAGE_DATA &&
                         numberAt<std::uint32_t>(mdb_->pg_buf + 4) == static_cast<std::uint32_t>(page_);
        if (!own) fail("tablosunun satırları arasında başka bir sayfa var");
    }
    // The library leaves where the value begins and how long it is; a Null begins nowhere, and of a flag it
    // leaves whether it is down.
    [[nodiscard]] Value value(const MdbColumn& column, std::uint64_t row) const {
        if (column.col_type == MDB_BOOL) return column.cur_value_len == 0;
        if (column.cur_value_start == 0 || !isReadable(column.col_type)) return {};
        const auto start = static_cast<std::size_t>(column.cur_value_start);
        const auto length = static_cast<std::size_t>(column.cur_value_len);
        std::optional<Value> read;
        if (start < kPageSize && length <= kPageSize - start) {
            const auto* bytes = reinterpret_cast<const char*>(mdb_->pg_buf) + start;
            read = valueOf(mdb_, column, {bytes, length});
        }
        if (!read)
            fail("tablosunun " + std::to_string(row) + ". satırında " + column.name + " alanı okunamıyor");
        return *read;
    }

    std::string path_;
    std::string name_;
    MdbHandle* mdb_ = nullptr;
    unsigned long page_ = 0;
    std::unique_ptr<MdbTableDef, TableCloser> table_;
};

JetFile::JetFile(const std::string& path) : path_(path), handle_(std::make_unique<Handle>(path)) {
    if (handle_->mdb == nullptr) throw Damaged(path + " bozuk: dosya açılamıyor. Hiçbir şey aktarılmadı.");
    MdbCatalogEntry catalog{};
    catalog.mdb = handle_->mdb;
    catalog.object_type = MDB_TABLE;
    catalog.table_pg = kCatalogPage;
    std::strcpy(catalog.object_name, "MSysObjects");
    Reading(&catalog, path).walk([](std::span<const Value>) {});
    const GPtrArray* entries = mdb_read_catalog(handle_->mdb, MDB_ANY);
    if (entries == nullptr) throw Damaged(path + " bozuk: tabloların listesi okunamıyor.");
    for (unsigned i = 0; i < entries->len; ++i) {
        auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(entries, i));
        JetTable table;
        table.name = entry->object_name;
        table.linked = entry->object_type == MDB_LINKED_TABLE;
        if (!table.linked) {
            if (mdb_is_user_table(entry) == 0) continue;
            const Reading reading(entry, path);
            table.rows = reading.rows();
            table.columns = reading.columns();
        }
        tables_.push_back(std::move(table));
    }
}

JetFile::~JetFile() = default;

void JetFile::read(const JetTable& table, const RowTaker& take) const {
    MdbCatalogEntry* entry = mdb_get_catalogentry_by_name(handle_->mdb, table.name.c_str());
    if (entry == nullptr) throw Damaged(path_ + " bozuk: " + table.name + " tablosu bulunamıyor.");
    Reading(entry, path_).walk(take);
}

} // namespace veldona::aktar
