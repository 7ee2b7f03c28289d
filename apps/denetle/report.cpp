#include "apps/denetle/report.h"

#include <string_view>

#include "platform/runtime/format.h"
#include "platform/runtime/value.h"

namespace veldona::denetle {
namespace {

std::string amount(double value) {
    return format(Value(value), "#,##0.00");
}

std::string count(double value) {
    return format(Value(value),
                  value == static_cast<double>(static_cast<std::int64_t>(value)) ? "0" : "0.00");
}

std::string stockSentence(const char* what, const Finding& finding) {
    return what + count(finding.found) + " yazılı, " + count(finding.expected) + " olmalı";
}

std::string sentence(const Finding& finding) {
    switch (finding.fault) {
    case Fault::HeaderWithoutLines:
        return "satışın ürün satırı yok";
    case Fault::LinesWithoutHeader:
        return "ürün satırları var (" + amount(finding.found) + "), satışın başlığı yok";
    case Fault::ScheduleWithoutHeader:
        return "taksitler var (" + amount(finding.found) + "), satışın başlığı yok";
    case Fault::PaymentsWithoutSale:
        return "ödeme alınmış (" + amount(finding.found) + "), satış yok";
    case Fault::RowsOfAnotherAccount:
        return "satış başka bir hesabın, " + count(finding.found) + " satırı bu hesaba yazılmış";
    case Fault::TwoHeaders:
        return "bu numarada " + count(finding.found) + " satış başlığı var";
    case Fault::ScheduleDiffers:
        return "taksitlerin toplamı " + amount(finding.found) + ", satışın tutarı " +
               amount(finding.expected) + ", fark " + amount(finding.found - finding.expected);
    case Fault::LinesDiffer:
        return "ürün satırlarının indirimli toplamı " + amount(finding.found) + ", satışın tutarı " +
               amount(finding.expected) + ", fark " + amount(finding.found - finding.expected);
    case Fault::NegativeRemainder:
        return "borcundan çok ödenmiş, kalan " + amount(finding.found);
    case Fault::CustomerMissing:
        return "müşteri kartı yok, bu numarayla " + count(finding.found) + " satır var";
    case Fault::TwoCards:
        return "bu numarayı " + count(finding.found) + " müşteri kartı taşıyor";
    case Fault::StockDiffersSold:
        return stockSentence("satılan ", finding);
    case Fault::StockDiffersLeft:
        return stockSentence("kalan ", finding);
    }
    return {};
}

bool isStock(const Finding& finding) {
    return finding.fault == Fault::StockDiffersSold || finding.fault == Fault::StockDiffersLeft;
}

std::string looked(const Findings& findings) {
    return std::to_string(findings.customers) + " müşteri, " + std::to_string(findings.sales) + " satış, " +
           std::to_string(findings.rows) + " satıra bakıldı";
}

// A control character of a broken text would act on the terminal.
std::string shown(std::string_view text) {
    std::string plain(text);
    for (char& letter : plain)
        if (static_cast<unsigned char>(letter) < ' ' || letter == '\x7f') letter = '?';
    return plain;
}

std::string cell(std::string_view text) {
    std::string quoted = "\"";
    if (!text.empty() && std::string_view("=+-@\t\r").find(text.front()) != std::string_view::npos)
        quoted += '\'';
    for (const char letter : text) {
        if (letter == '"') quoted += '"';
        quoted += letter;
    }
    return quoted + '"';
}

std::string figure(Measure measure, double value) {
    if (measure == Measure::None) return {};
    return measure == Measure::Count ? count(value) : format(Value(value), "0.00");
}

} // namespace

std::string asText(const Findings& findings) {
    if (findings.all.empty()) return "Defter tutuyor: " + looked(findings) + ", bulgu yok.\n";
    std::string text;
    const Finding* last = nullptr;
    int accounts = 0;
    for (const Finding& finding : findings.all) {
        if (last == nullptr || last->account != finding.account || isStock(*last) != isStock(finding)) {
            if (last != nullptr) text += '\n';
            text += isStock(finding) ? "Stok" : "Hesap " + shown(finding.account);
            text += '\n';
            if (!isStock(finding)) ++accounts;
        }
        text += "  ";
        if (!finding.subject.empty())
            text += (isStock(finding) ? "Ürün " : "Satış ") + shown(finding.subject) + ": ";
        text += sentence(finding) + '\n';
        last = &finding;
    }
    return text + '\n' + std::to_string(findings.all.size()) + " bulgu, " + std::to_string(accounts) +
           " hesapta; " + looked(findings) + ".\n";
}

std::string asCsv(const Findings& findings) {
    std::string text = "\xEF\xBB\xBFHesap;Satış;Ürün;Bulgu;Olması gereken;Bulunan\r\n";
    for (const Finding& finding : findings.all) {
        const Measure measure = measureOf(finding.fault);
        text += cell(finding.account) + ';';
        text += (isStock(finding) ? ';' + cell(finding.subject) : cell(finding.subject) + ';') + ';';
        text += cell(sentence(finding)) + ';' + figure(measure, finding.expected) + ';' +
                figure(measure, finding.found) + "\r\n";
    }
    return text;
}

std::string asCsv(const std::string& ofTheJournal) {
    return ";;;" + cell(ofTheJournal) + ";;\r\n";
}

} // namespace veldona::denetle
