#include "storefile.h"

#include "platform/runtime/conversion.h"
#include "platform/store/faces/adodb.h"

namespace veldona::store {

std::string cellText(const Value& value) {
    return value.isNull() ? "NULL" : toText(value);
}

std::string OpenStore::rows(std::string_view sql) {
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

} // namespace veldona::store
