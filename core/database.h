// The generic layer over the books: recordsets on the shared connection, statements built from field names
// and values, and the messages that a failed statement gives.
//
// Whole-record saves and deletes are wrapped in a transaction by their callers; every other write stands by
// itself. The writes here tell the operator what failed and return false; opening a recordset has no guard.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store/faces/adodb.h"

namespace veldona {

struct Session;

using RecordsetPtr = std::unique_ptr<adodb::Recordset>;

// Replaces `rs` by a new recordset on the shared connection. Raises what the statement raises.
void KayitSetiAc(Session& session, RecordsetPtr& rs, std::string_view sql, adodb::CursorLocation konum);
void KayitSetiKapat(RecordsetPtr& rs);
// The same inside a guard: a failure is shown in a plain box, its text left in `hata`, and false returned.
bool KayitSetiAcKontrollu(Session& session, RecordsetPtr& rs, std::string_view sql, std::string& hata);

// The one transaction of the shared connection. True where it went through; a failure is told in a plain
// box. What was to be told inside it is told behind its end.
bool IslemBaslat(Session& session);
bool IslemOnayla(Session& session);
bool IslemGeriAl(Session& session); // also true where nothing is open

// One statement as field names and values.
struct KayitYapisi {
    enum : std::int32_t { Add = 1, Change = 2 };
    static constexpr std::size_t kMostFields = 100;

    std::int32_t Islem = 0;
    std::string Tablo;
    std::string Kosul;                           // behind " WHERE " of an update
    std::array<std::string, kMostFields> Alan;   // the first empty name ends the list
    std::array<std::int32_t, kMostFields> Tip{}; // the store's number of each field's type
    std::array<Value, kMostFields> Deger;
    bool isStatement = false; // its failure is told as that of a statement, in one box

    // Sets the next free field.
    void add(std::string alan, Value deger);
    [[nodiscard]] std::size_t fieldCount() const;
};

void KayitYapisiTemizle(KayitYapisi& rec);
void TipleriAl(KayitYapisi& rec, const adodb::Recordset& rs);
// Builds and runs the statement of `rec`. A failure is shown in a box titled "vorelHata", false returned.
bool KayitYaz(Session& session, KayitYapisi& rec);
// The same for several of an open transaction, in their order, in one step where the store has one: the first
// that fails is told, and those behind it are not written. `firstKey`: the counter that the first one took.
bool writeRecords(Session& session, std::span<KayitYapisi> records, std::int64_t* firstKey = nullptr);
// The text of one value in a statement; `deger` may be changed by it. Error 18172 for a type that it does not
// know.
[[nodiscard]] std::string DegerYaz(std::int32_t tip, Value& deger);

// Runs a statement; "" is true with no action. A failure is shown in a box titled `baslik`, false returned.
bool SqlCalistir(Session& session, adodb::Connection& connection, const std::string& sql,
                 const std::string& baslik = {});
// What a broken relation is told as, from a row of names: `satir` holds table, column, referenced table and
// column.
[[nodiscard]] std::string relationError(const std::array<std::string, 4>& satir, bool deletion);

// The last counter that the store gave out, -1 where there is none.
[[nodiscard]] double SonKimlik(Session& session, const std::string& tablo);
// Values as the callers give them.
enum class StockMovement { Alis = 1, Sale = 2, TakeBack = 3 };
enum class StockDirection { In = 1, Out = 2 };
// The record that moves the product's totals; nothing where there is no such product, error 6 where a total
// leaves 32 bits.
[[nodiscard]] std::optional<KayitYapisi> stockRecord(Session& session, const std::string& urkod,
                                                     std::int32_t miktar, StockMovement hareket,
                                                     StockDirection yon);
// Writes it. False where there is no such product or the write fails.
bool StokGuncelle(Session& session, const std::string& urkod, std::int32_t miktar, StockMovement hareket,
                  StockDirection yon);

// One field of the row whose `anahtar` is the text `deger`; True where no row exists.
[[nodiscard]] Value AlanDegeriOku(Session& session, const std::string& alan, const std::string& tablo,
                                  const std::string& key, const std::string& deger);
[[nodiscard]] Value KayitDegeri(Session& session, const std::string& alan, const std::string& tablo,
                                const std::string& key, const std::string& deger);

enum class FieldKind : char { Number = 'N', Text = 'T' };

// The highest number of a column plus 1, as plain text; "1" for an empty table, "" where the question fails.
// `kosul` stands behind " WHERE " where it is not empty; the values of a text column are read as far as they
// are digits.
[[nodiscard]] std::string YeniNo(Session& session, const std::string& alan, const std::string& tablo,
                                 const std::string& kosul, FieldKind kind);

struct UniqueField {
    std::string alan;
    std::string deger;
    FieldKind kind;
};
// True where no other row holds these values. An existing row names itself by `anahtar` and `id`; a new one
// gives "". A question that fails is shown in a plain box and has no answer.
[[nodiscard]] std::optional<bool> TekilMi(Session& session, const std::string& tablo,
                                          const std::vector<UniqueField>& fields, const std::string& key = {},
                                          const std::string& id = {});

// Opens a connection of its own on the data source, which becomes the shared one, and runs `sql` on it into
// `rs`.
void KomutCalistir(Session& session, RecordsetPtr& rs, const std::string& sql);

// A place in a recordset as text; "" where there is none. Going there: true where no error arose.
[[nodiscard]] std::string ImlecAl(const adodb::Recordset& rs);
bool ImlecGit(adodb::Recordset& rs, const std::string& cursor);

} // namespace veldona
