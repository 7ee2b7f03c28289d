#include "apps/aktar/jetfile.h"

#include <mdbtools.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string_view>
#include <unordered_set>

#include "apps/aktar/jettext.h"
#include "apps/aktar/jetvalue.h"
#include "platform/store/dialect/names.h"

namespace veldona::aktar {
namespace {

constexpr std::size_t kPageSize = MDB_PGSIZE;
constexpr std::size_t kCatalogPage = 2;
constexpr int kRowsAt = 12; // of a data page: how many rows it has, and behind it where each begins

// What a row's place says besides where it begins. A row that grew out of its page leaves a pointer behind;
// the row it points to is marked as deleted, so that it is met once. A deleted pointer leaves that row as it
// is, so the mark alone must do.
constexpr unsigned kDeleted = 0x8000, kMoved = 0x4000;

// A name as a table or a field can have, of letters that a Turkish shop's program would use.
bool isName(std::string_view name) {
    return !name.empty() && !foreignLetter(name) &&
           std::none_of(name.begin(), name.end(), [](unsigned char letter) {
               return letter < ' ' || letter == 0x7F || letter == '[' || letter == ']' || letter == '.' ||
                      letter == '!' || letter == '`';
           });
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
        checkColumns();
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
        came_ = 0;
        longLeft_ = std::filesystem::file_size(path_);
        std::unordered_set<std::uint32_t> seen;
        while (mdb_read_next_dpg(table_.get()) != 0 && came_ <= rows()) {
            const std::uint32_t page = table_->cur_phys_pg;
            checkPage();
            if (!seen.insert(page).second) fail("tablosunda bir sayfa iki kez sayılıyor");
            const unsigned count = numberAt<std::uint16_t>(mdb_->pg_buf + kRowsAt);
            for (unsigned i = 0; i < count && came_ <= rows(); ++i)
                readPlace(page, i, take);
        }
        if (came_ == rows()) return;
        fail("tablosu " + std::to_string(rows()) + " satır tuttuğunu söylüyor, dosyadan " +
             (came_ > rows() ? "daha çok satır" : std::to_string(came_) + " satır") + " okunuyor");
    }

private:
    [[noreturn]] void fail(const std::string& what) const {
        throw Damaged(path_ + " bozuk: " + name_ + ' ' + what + ". Hiçbir şey aktarılmadı.");
    }
    [[nodiscard]] std::string thisRow() const {
        return "tablosunun " + std::to_string(came_ + 1) + ". satırı";
    }
    [[nodiscard]] const MdbColumn& column(unsigned index) const {
        return *static_cast<const MdbColumn*>(g_ptr_array_index(table_->columns, index));
    }
    void checkColumns() const {
        std::unordered_set<std::string> names;
        for (unsigned i = 0; i < table_->num_cols; ++i) {
            if (!isName(column(i).name)) fail("tablosunun bir alanının adı okunamıyor");
            if (!names.insert(store::foldName(column(i).name)).second)
                fail(std::string("tablosunda iki ") + column(i).name + " alanı var");
        }
    }
    void checkPage() const {
        const bool own = mdb_->pg_buf[0] == MDB_PAGE_DATA &&
                         numberAt<std::uint32_t>(mdb_->pg_buf + 4) == static_cast<std::uint32_t>(page_);
        if (!own) fail("tablosunun satırları arasında başka bir sayfa var");
    }

    // Where a row lies on the page that was read, and what its place says.
    struct Place {
        int start;
        std::size_t size;
        unsigned marks;
    };
    [[nodiscard]] Place placeOf(unsigned index) const {
        int start = 0;
        std::size_t size = 0;
        const std::size_t listed = kRowsAt + 2 + 2 * (std::size_t{index} + 1);
        if (mdb_find_row(mdb_, static_cast<int>(index), &start, &size) != 0)
            fail(thisRow() + " sayfanın dışında");
        const auto marks = static_cast<unsigned>(start) & (kDeleted | kMoved);
        start &= 0x1FFF;
        if (size != 0 && static_cast<std::size_t>(start) < listed) fail(thisRow() + " sayfanın dışında");
        return {start, size, marks};
    }

    void readPlace(std::uint32_t page, unsigned index, const RowTaker& take) {
        const Place place = placeOf(index);
        if ((place.marks & kDeleted) != 0) return;
        if (place.marks == 0) {
            readRow(place, take);
            return;
        }
        if (place.size < 4) fail(thisRow() + " başka bir sayfada ve yeri okunamıyor");
        const auto where = numberAt<std::uint32_t>(mdb_->pg_buf + place.start);
        turnTo(where >> 8);
        checkPage();
        const unsigned other = where & 0xFF;
        if (other >= numberAt<std::uint16_t>(mdb_->pg_buf + kRowsAt))
            fail(thisRow() + " gösterilen yerde değil");
        const Place moved = placeOf(other);
        if (moved.marks != kDeleted) fail(thisRow() + " gösterilen yerde değil");
        readRow(moved, take);
        turnTo(page);
    }
    void turnTo(std::uint32_t page) const {
        if (mdb_read_pg(mdb_, page) != static_cast<ssize_t>(kPageSize)) fail(thisRow() + " okunamıyor");
    }

    void readRow(const Place& place, const RowTaker& take) {
        std::vector<MdbField> fields(table_->num_cols);
        if (mdb_crack_row(table_.get(), place.start, place.size, fields.data()) < 0)
            fail(thisRow() + " okunamıyor");
        int fixedEnd = place.start;
        for (const MdbField& field : fields)
            if (field.is_fixed != 0 && field.is_null == 0)
                fixedEnd = std::max(fixedEnd, field.start + static_cast<int>(sizeOf(field)));
        row_.resize(fields.size());
        for (const MdbField& field : fields) {
            const auto index = static_cast<std::size_t>(field.colnum);
            row_[index] = value(column(static_cast<unsigned>(index)), field, place, fixedEnd);
        }
        take(row_);
        ++came_;
    }
    [[nodiscard]] std::size_t sizeOf(const MdbField& field) const {
        return sizeOfFixed(column(static_cast<unsigned>(field.colnum)).col_type);
    }
    // Fields of one size lie before those of changing size, and none outside the row.
    [[nodiscard]] Value value(const MdbColumn& column, const MdbField& field, const Place& place,
                              int fixedEnd) {
        if (column.col_type == MDB_BOOL) return field.is_null == 0;
        if (field.is_null != 0 || !isReadable(column.col_type)) return {};
        const int first = field.is_fixed != 0 ? place.start : fixedEnd;
        const int end = place.start + static_cast<int>(place.size);
        std::optional<Value> read;
        if (field.siz >= 0 && field.start >= first && field.start <= end && field.siz <= end - field.start) {
            const auto* bytes = reinterpret_cast<const char*>(mdb_->pg_buf) + field.start;
            read = valueOf(mdb_, column.col_type, {bytes, static_cast<std::size_t>(field.siz)}, longLeft_);
        }
        if (!read)
            fail("tablosunun " + std::to_string(came_ + 1) + ". satırında " + column.name +
                 " alanı okunamıyor");
        return *read;
    }

    std::string path_;
    std::string name_;
    MdbHandle* mdb_ = nullptr;
    unsigned long page_ = 0;
    std::unique_ptr<MdbTableDef, TableCloser> table_;
    std::uint64_t came_ = 0;
    std::uint64_t longLeft_ = 0; // bytes that the long texts not met yet can have
    std::vector<Value> row_;
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
    if (entries == nullptr)
        throw Damaged(path + " bozuk: tabloların listesi okunamıyor. Hiçbir şey aktarılmadı.");
    for (unsigned i = 0; i < entries->len; ++i) {
        auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(entries, i));
        JetTable table;
        table.name = entry->object_name;
        table.linked = entry->object_type == MDB_LINKED_TABLE;
        if (!table.linked) {
            if (mdb_is_user_table(entry) == 0) continue;
            if (!isName(table.name))
                throw Damaged(path + " bozuk: bir tablonun adı okunamıyor. Hiçbir şey aktarılmadı.");
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
    if (entry == nullptr)
        throw Damaged(path_ + " bozuk: " + table.name + " tablosu bulunamıyor. Hiçbir şey aktarılmadı.");
    Reading(entry, path_).walk(take);
}

} // namespace veldona::aktar
