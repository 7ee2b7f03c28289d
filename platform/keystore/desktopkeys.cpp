#include "platform/keystore/desktopkeys.h"

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>

#include <libsecret/secret.h>

namespace veldona {
namespace {

constexpr std::chrono::seconds kPatience(5);

constexpr const char* kBooks = "defter"; // the attribute by which an entry is found

const SecretSchema* schema() {
    static const SecretSchema own = {
        .name = "arpa.home.veldona.taksit",
        .flags = SECRET_SCHEMA_NONE,
        .attributes = {{kBooks, SECRET_SCHEMA_ATTRIBUTE_STRING}, {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
        .reserved = 0,
        .reserved1 = nullptr,
        .reserved2 = nullptr,
        .reserved3 = nullptr,
        .reserved4 = nullptr,
        .reserved5 = nullptr,
        .reserved6 = nullptr,
        .reserved7 = nullptr};
    return &own;
}

struct Gone {
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(GCancellable* cancellable) const { g_object_unref(cancellable); }
    void operator()(SecretValue* value) const { secret_value_unref(value); }
    void operator()(GList* found) const { g_list_free_full(found, g_object_unref); }
};
using Error = std::unique_ptr<GError, Gone>;

// Gives a call up that a service which hangs never answers.
class Patience {
public:
    Patience()
        : cancellable_(g_cancellable_new()), watch_([this](const std::stop_token& over) {
              std::mutex guard;
              std::unique_lock hold(guard);
              std::condition_variable_any ended;
              if (!ended.wait_for(hold, over, kPatience, [&over] { return over.stop_requested(); }))
                  g_cancellable_cancel(cancellable_.get());
          }) {}
    [[nodiscard]] GCancellable* get() const { return cancellable_.get(); }

private:
    std::unique_ptr<GCancellable, Gone> cancellable_;
    std::jthread watch_;
};

// One entry, whatever path led to the books.
std::string nameOf(const std::string& books) {
    std::error_code unreachable;
    const auto whole = std::filesystem::weakly_canonical(books, unreachable);
    return unreachable ? books : whole.string();
}

} // namespace

std::optional<Secret> DesktopKeys::find(const std::string& books) {
    const Patience patience;
    GError* failed = nullptr;
    const std::unique_ptr<GList, Gone> found(secret_password_search_sync(schema(), SECRET_SEARCH_LOAD_SECRETS,
                                                                         patience.get(), &failed, kBooks,
                                                                         nameOf(books).c_str(), nullptr));
    const Error ignored(failed);
    if (found == nullptr) return std::nullopt;
    GError* locked = nullptr;
    const std::unique_ptr<SecretValue, Gone> value(secret_retrievable_retrieve_secret_sync(
        static_cast<SecretRetrievable*>(found->data), patience.get(), &locked));
    const Error untold(locked);
    const char* text = value == nullptr ? nullptr : secret_value_get_text(value.get());
    return text == nullptr ? std::nullopt : std::optional(Secret(text));
}

std::string DesktopKeys::keep(const std::string& books, const Secret& password) {
    const std::unique_ptr<SecretValue, Gone> value(
        secret_value_new(password.text().data(), static_cast<gssize>(password.text().size()), "text/plain"));
    GError* failed = nullptr;
    secret_password_store_binary_sync(schema(), SECRET_COLLECTION_DEFAULT, "Veldona Taksit", value.get(),
                                      nullptr, &failed, kBooks, nameOf(books).c_str(), nullptr);
    const Error error(failed);
    if (error == nullptr) return {};
    return "Parola bu makinede saklanmadı: masaüstünün anahtarlığı (Secret Service) çalışmıyor ya da kilidi "
           "açılmadı. Başka bir yere de yazılmadı; her açılışta sorulacak.";
}

void DesktopKeys::forget(const std::string& books) {
    const Patience patience;
    GError* failed = nullptr;
    secret_password_clear_sync(schema(), patience.get(), &failed, kBooks, nameOf(books).c_str(), nullptr);
    const Error ignored(failed); // what is left opens nothing any more
}

} // namespace veldona
