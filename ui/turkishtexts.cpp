#include "ui/turkishtexts.h"

#include <map>
#include <string_view>

namespace veldona {

namespace {

const std::map<std::string_view, const char*> kTexts = {
    {"&Undo", "&Geri Al"},
    {"&Redo", "&Yinele"},
    {"Cu&t", "Ke&s"},
    {"&Copy", "&Kopyala"},
    {"&Paste", "Ya&pıştır"},
    {"Delete", "Sil"},
    {"Select All", "Hepsini Seç"},
    {"Copy &Link Location", "&Bağlantıyı Kopyala"},
    {"Previous Month", "Önceki Ay"},
    {"Next Month", "Sonraki Ay"},
};

} // namespace

QString TurkishTexts::translate(const char*, const char* source, const char*, int) const {
    const auto found = kTexts.find(source);
    return found == kTexts.end() ? QString() : QString::fromUtf8(found->second);
}

} // namespace veldona
