#include "ledger/panes.h"

#include "core/database.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr const char* kHelp = R"(<h3>Kısaca</h3>
<p>Müşteri numarasını yazın ya da adından arayın. Aşağı ok satışlara geçer; <b>Enter</b> satışı açar ve tutara
geçer. Tutarı yazıp <b>F2</b> ile tahsil edin.</p>
<table cellpadding="3">
<tr><td><b>F2</b></td><td>Tahsilatı kaydet</td></tr>
<tr><td><b>F6</b></td><td>Satışı sil</td></tr>
<tr><td><b>F9</b></td><td>Makbuz</td></tr>
<tr><td><b>F10</b></td><td>Detaylı ara</td></tr>
<tr><td><b>← →</b></td><td>Önceki, sonraki müşteri</td></tr>
<tr><td><b>↑ ↓</b></td><td>Satışlar</td></tr>
<tr><td><b>Esc</b></td><td>Ekranı kapat</td></tr>
</table>
<p>Bir taksit satırına tıklamak tutarını önerir. Satır listelerinde sağ tuş, düzeltme menüsünü açar.</p>)";

std::string escaped(const std::string& text) {
    return replaceAll(replaceAll(replaceAll(text, "&", "&amp;"), "<", "&lt;"), ">", "&gt;");
}

std::string letterhead(Session& session) {
    RecordsetPtr rs;
    KayitSetiAc(session, rs, "SELECT GIRIS,FIRMA,ADRES,TELEFON,GSM,WEB,MAIL FROM FIRMABILGISI",
                adodb::CursorLocation::Client);
    if (rs->eof()) return {};
    std::string html = "<h3>" + escaped(joinText(rs->value("FIRMA"))) + "</h3>";
    for (const char* field : {"GIRIS", "ADRES", "TELEFON", "GSM", "WEB", "MAIL"})
        if (const std::string text = trim(joinText(rs->value(field))); !text.empty())
            html += "<p>" + escaped(text) + "</p>";
    return html;
}

} // namespace

void fillPages(FrmMainVeldona& f) {
    f.WebBrowser1.setHtml(kHelp);
    f.WebBrowser2.setHtml(letterhead(f.session));
}

} // namespace veldona
