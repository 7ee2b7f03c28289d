#include "platform/runtime/error.h"

#include <algorithm>
#include <array>

namespace veldona {

namespace {

struct Description {
    ErrorNumber number;
    const char* text;
};

constexpr std::array descriptions = {
    Description{ErrorNumber::InvalidCall, "Geçersiz yordam çağrısı veya bağımsız değişken"},
    Description{ErrorNumber::Overflow, "Taşma"},
    Description{ErrorNumber::OutOfMemory,
                "Bellek yetmedi, işlem yapılmadı. Açık programları kapatıp yeniden deneyin."},
    Description{ErrorNumber::SubscriptOutOfRange, "Alt simge aralık dışında"},
    Description{ErrorNumber::DivisionByZero, "Sıfıra bölme"},
    Description{ErrorNumber::TypeMismatch, "Tür uyuşmazlığı"},
    Description{ErrorNumber::UserInterrupt, "İşlemden vazgeçildi."},
    Description{ErrorNumber::FileNotFound, "Dosya bulunamadı"},
    Description{ErrorNumber::FileAlreadyExists, "Dosya zaten var"},
    Description{ErrorNumber::PathFileAccess, "Yol/Dosya erişim hatası"},
    Description{ErrorNumber::PathNotFound, "Yol bulunamadı"},
    Description{ErrorNumber::ObjectNotSet, "Nesne değişkeni veya With blok değişkeni ayarlanmadı"},
    Description{ErrorNumber::InvalidUseOfNull, "Geçersiz Null kullanımı"},
    Description{ErrorNumber::InvalidPropertyIndex, "Geçersiz özellik dizini"},
    Description{ErrorNumber::NoCurrentRecord, "Geçerli kayıt yok."},
    Description{ErrorNumber::RecordDeleted, "Kayıt silinmiş."},
    Description{ErrorNumber::NoSuchItem, "Bu koleksiyonda öğe bulunamadı."},
    Description{ErrorNumber::DataTypeConversion, "Veri türü dönüştürme hatası."},
};

} // namespace

std::string standardDescription(ErrorNumber number) {
    const auto* found = std::find_if(descriptions.begin(), descriptions.end(),
                                     [number](const Description& each) { return each.number == number; });
    if (found != descriptions.end()) return found->text;
    return "Bilinmeyen hata " + std::to_string(static_cast<std::int32_t>(number));
}

RuntimeError::RuntimeError(ErrorNumber number)
    : RuntimeError(static_cast<std::int32_t>(number), standardDescription(number)) {}

void raise(ErrorNumber number) {
    throw RuntimeError(number);
}

} // namespace veldona
