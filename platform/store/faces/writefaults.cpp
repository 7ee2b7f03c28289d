#include "platform/store/faces/writefaults.h"

#include "platform/store/dialect/names.h"
#include "platform/store/dialect/storeerror.h"

namespace veldona::store {

void WriteFaults::add(int nth, std::string_view table) {
    faults_.push_back({std::string(table), nth});
}

void WriteFaults::countWrite(std::string_view table) {
    if (faults_.empty()) return;
    bool fails = false;
    for (Fault& fault : faults_)
        if (sameName(fault.table, table) && --fault.writesLeft == 0) fails = true;
    std::erase_if(faults_, [](const Fault& fault) { return fault.writesLeft <= 0; });
    if (fails)
        throw StoreError(StoreError::Kind::Injected,
                         "Yazma sırasında hata oluştu (" + std::string(table) + "). Kayıt yapılmadı.");
}

} // namespace veldona::store
