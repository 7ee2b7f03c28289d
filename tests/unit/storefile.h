// A small shop's file in a folder of its own, for the tests of the store.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/createdatabase.h"
#include "platform/store/faces/adodb.h"
#include "platform/store/faces/dao.h"
#include "platform/store/faces/database.h"
#include "platform/store/faces/workspace.h"
#include "tests/support/files.h"
#include "tests/support/raised.h"
#include "tests/support/testbooks.h"

namespace veldona::store {

inline constexpr const char* kPassword = "sınav.parolası";

class StoreFile : public ::testing::Test {
protected:
    static std::vector<TableDef> tables() {
        return {{"MUSTERI",
                 {{"ID", ColumnType::Counter},
                  {"HSTNO", ColumnType::Text},
                  {"AD", ColumnType::Text},
                  {"NOTU", ColumnType::Memo},
                  {"DOGTRH", ColumnType::Date}},
                 {{"HSTNO"}, {"AD"}}},
                {"ODEME",
                 {{"ID", ColumnType::Counter},
                  {"MUSTNO", ColumnType::Text},
                  {"ISLEMNO", ColumnType::Whole},
                  {"TUTAR", ColumnType::Number},
                  {"TARIH", ColumnType::Date},
                  {"PESIN", ColumnType::Small},
                  {"ISLENDI", ColumnType::Boolean}},
                 {{"MUSTNO", "ISLEMNO"}}}};
    }
    static std::vector<SavedQueryDef> queries() {
        return {{"S_ODEME", "SELECT ODEME.ID, MUSTERI.AD AS UNVAN, ODEME.TUTAR, ODEME.TARIH FROM ODEME "
                            "INNER JOIN MUSTERI ON ODEME.MUSTNO = MUSTERI.HSTNO"}};
    }
    void create() { books.emplace(path, kPassword, tables(), queries()); }

    // A process of its own, as far as the store is concerned.
    std::unique_ptr<Workspace> workspace(Delivered delivered = {}) const {
        WorkspaceConfig config;
        config.delivered = std::move(delivered);
        config.toNativePath = [](std::string_view asWritten) { return std::string(asWritten); };
        config.dataSource = [this](std::string_view name) {
            return name == "dukkan" ? std::optional(path) : std::nullopt;
        };
        config.place = [this](std::string_view asWritten) {
            return books && asWritten == path ? books->place() : Place(FilePlace{std::string(asWritten)});
        };
        config.clock = clock;
        config.goOnWaiting = [this](std::chrono::milliseconds waited) {
            longestWait = waited;
            return waited < givesUpAfter;
        };
        return std::make_unique<Workspace>(std::move(config));
    }

    test::TemporaryFolder place;
    std::string folder = place.path().string(), path = folder + "/dukkan.mdb";
    // A server tells of another's writes a moment later.
    static void awaitNews() {
        if (test::areBooksOnServer()) std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }

    std::optional<test::TestBooks> books;
    std::function<DateTime()> clock;
    std::chrono::milliseconds givesUpAfter = std::chrono::hours(1);
    mutable std::chrono::milliseconds longestWait{0};
};

inline std::string cellText(const Value& value) {
    return value.isNull() ? "NULL" : toText(value);
}

// The same with the file made and a connection open.
class OpenStore : public StoreFile {
protected:
    OpenStore() {
        create();
        connection.open("dukkan", "", kPassword);
    }
    std::shared_ptr<Database> database() { return store->open(path, ""); }
    dao::Database dao() { return dao::DBEngine(*store).openDatabase(path); }

    // What a SELECT answers: cells joined by "|", rows by a line end.
    std::string rows(std::string_view sql) {
        adodb::Recordset answer;
        answer.open(sql, connection);
        std::string text;
        for (; !answer.eof(); answer.moveNext()) {
            if (!text.empty()) text += '\n';
            for (int i = 0; i < answer.fieldCount(); ++i)
                text.append(i == 0 ? "" : "|").append(cellText(answer.value(i)));
        }
        return text;
    }

    std::unique_ptr<Workspace> store = workspace();
    adodb::Connection connection{*store};
};

using test::numberRaised;
template <class Step> std::optional<StoreError::Kind> kindRaised(const Step& step) {
    const auto error = test::raised<StoreError>(step);
    return error ? std::optional(error->kind()) : std::nullopt;
}

} // namespace veldona::store
