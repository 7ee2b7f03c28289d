#include "apps/hazirla/words.h"

namespace veldona::hazirla {

std::span<const FirstName> firstNames() {
    static constexpr FirstName all[] = {
        {"Ayşe", true},      {"Fatma", true},    {"Emine", true},    {"Hatice", true},    {"Zeynep", true},
        {"Elif", true},      {"Meryem", true},   {"Şerife", true},   {"Sultan", true},    {"Hanife", true},
        {"Zehra", true},     {"Gülsüm", true},   {"Havva", true},    {"Hacer", true},     {"Özlem", true},
        {"Yasemin", true},   {"Songül", true},   {"Işıl", true},     {"Çiğdem", true},    {"Ülkü", true},
        {"Şule", true},      {"Nurten", true},   {"İpek", true},     {"Gönül", true},     {"Kübra", true},
        {"Mehmet", false},   {"Mustafa", false}, {"Ahmet", false},   {"Ali", false},      {"Hüseyin", false},
        {"Hasan", false},    {"İbrahim", false}, {"İsmail", false},  {"Osman", false},    {"Yusuf", false},
        {"Murat", false},    {"Ömer", false},    {"Ramazan", false}, {"Halil", false},    {"Süleyman", false},
        {"Abdullah", false}, {"Mahmut", false},  {"Recep", false},   {"Salih", false},    {"Fatih", false},
        {"Kadir", false},    {"Emre", false},    {"Gökhan", false},  {"Uğur", false},     {"Şükrü", false},
        {"Çetin", false},    {"Ilgaz", false},   {"Ümit", false},    {"Bünyamin", false},
    };
    return all;
}

std::span<const char* const> surnames() {
    static constexpr const char* all[] = {
        "Yılmaz",  "Kaya",   "Demir",  "Şahin",   "Çelik",  "Yıldız",  "Yıldırım", "Öztürk", "Aydın",
        "Özdemir", "Arslan", "Doğan",  "Kılıç",   "Aslan",  "Çetin",   "Kara",     "Koç",    "Kurt",
        "Özkan",   "Şimşek", "Polat",  "Korkmaz", "Özcan",  "Çakır",   "Erdoğan",  "Yavuz",  "Can",
        "Acar",    "Aktaş",  "Güler",  "Yalçın",  "Güneş",  "Bozkurt", "Bulut",    "Keskin", "Ünal",
        "Turan",   "Gül",    "Özer",   "Işık",    "Kaplan", "Avcı",    "Sarı",     "Tekin",  "Taş",
        "Köse",    "Yüksel", "Ateş",   "Aksoy",   "İnce",   "Uysal",   "Iğdır",    "Uçar",   "Ağaoğlu",
        "Soylu",   "Dinçer", "Gürbüz", "Karagöz", "Toprak", "Çiftçi",  "Ekinci",   "Şen",    "Özgür",
    };
    return all;
}

std::span<const char* const> occupations() {
    static constexpr const char* all[] = {
        "Esnaf",  "Memur",    "Öğretmen", "İşçi", "Çiftçi", "Emekli",   "Şoför",    "Ev Hanımı",
        "Berber", "Marangoz", "Hemşire",  "Aşçı", "Terzi",  "Muhasebe", "Elektrik", "Güvenlik",
    };
    return all;
}

std::span<const char* const> quarters() {
    static constexpr const char* all[] = {
        "Bahçelievler", "Cumhuriyet", "Çarşı",      "Çamlık",   "Fatih",     "Gazipaşa",  "Gülbahçe",
        "Hürriyet",     "Işıklar",    "İnönü",      "İstasyon", "Karşıyaka", "Kuyubaşı",  "Yenimahalle",
        "Ömerli",       "Sanayi",     "Şirinevler", "Ulus",     "Üçyol",     "Yeşiltepe",
    };
    return all;
}

std::span<const char* const> streets() {
    static constexpr const char* all[] = {
        "Atatürk Cd.", "Akasya Sk.",  "Bağlar Cd.",  "Çınar Sk.",    "Değirmen Sk.", "Ergenekon Cd.",
        "Gül Sk.",     "Güneş Sk.",   "Ihlamur Sk.", "İğde Sk.",     "Kavak Sk.",    "Köprü Cd.",
        "Lale Sk.",    "Menekşe Sk.", "Okul Sk.",    "Öğretmen Sk.", "Pazar Cd.",    "Söğüt Sk.",
        "Şelale Sk.",  "Tepe Sk.",    "Uzun Sk.",    "Üzüm Sk.",     "Yayla Cd.",    "Zafer Cd.",
    };
    return all;
}

std::span<const char* const> warnings() {
    static constexpr const char* all[] = {
        "Ödemelerini sürekli geciktiriyor, yeni satışta kefil istenecek.",
        "Adresinden taşınmış; iş yerinden ulaşılıyor.",
        "Telefonla arandı, ay sonunda ödeyeceğini söyledi.",
        "Senedi avukatta. Satış yapılmasın.",
        "Maaşını ayın 15'inde alıyor, vadeleri buna göre verilsin.",
        "Kardeşinin borcuna da kefil.",
    };
    return all;
}

std::span<const char* const> answers() {
    static constexpr const char* all[] = {
        "Maaşını alınca uğrayacak.",
        "Eşi açtı, akşam aranacak.",
        "Bir taksidi bu hafta, kalanı ay sonunda ödeyecek.",
        "Numara kullanılmıyor, iş yerinden ulaşılacak.",
        "Hasat parasını bekliyor.",
        "Ödediğini söylüyor, makbuzu getirecek.",
        "Telefonu açmadı, mesaj bırakıldı.",
        "Havale yapacak.",
    };
    return all;
}

std::span<const Product> products() {
    static constexpr Product all[] = {
        {"BZ01", "Buzdolabı", 700, 1800},
        {"CM01", "Çamaşır Makinesi", 500, 1200},
        {"BM01", "Bulaşık Makinesi", 500, 1100},
        {"FR01", "Fırın", 250, 700},
        {"OC01", "Ocak", 90, 300},
        {"TV01", "Televizyon", 400, 2200},
        {"SP01", "Elektrikli Süpürge", 120, 400},
        {"UT01", "Ütü", 40, 120},
        {"KL01", "Koltuk Takımı", 800, 2600},
        {"YO01", "Yatak Odası Takımı", 1200, 4000},
        {"YM01", "Yemek Masası", 300, 1400},
        {"SN01", "Sandalye", 40, 110},
        {"HL01", "Halı", 150, 900},
        {"PR01", "Perde", 80, 450},
        {"YT01", "Çift Kişilik Yatak", 200, 800},
        {"GD01", "Gardırop", 350, 1300},
        {"CK01", "Çekyat", 250, 700},
        {"SB01", "Soba", 150, 500},
        {"MK01", "Mutfak Robotu", 70, 260},
        {"CT01", "Çelik Tencere Seti", 80, 350},
    };
    return all;
}

} // namespace veldona::hazirla
