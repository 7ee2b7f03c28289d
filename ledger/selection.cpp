#include "ledger/loading.h"
#include "platform/runtime/conversion.h"

namespace veldona {

namespace {

// A neighbour that slipped and has no such row keeps the row it stood on.
void follow(std::initializer_list<ListBox*> neighbours, int row) {
    Err passedOver;
    for (ListBox* list : neighbours)
        attempt(passedOver, [&] { list->setListIndex(row); });
}

// The amount of the schedule row is proposed for the collection, without its grouping.
void proposeAmount(FrmMainVeldona& f, int row) {
    f.txtYaziIle.setText("");
    const std::string& amount = f.L5.list(row);
    f.mskOdenenPara.setText(amount.empty() ? "0" : toText(toDouble(amount)));
}

} // namespace

void L1_Click(FrmMainVeldona& f) {
    follow({&f.L2, &f.lstOdemeTip}, f.L1.listIndex());
}

void L2_Click(FrmMainVeldona& f) {
    follow({&f.L1, &f.lstOdemeTip}, f.L2.listIndex());
}

void L4_Click(FrmMainVeldona& f) {
    f.DuzeltKaynak = 1;
    follow({&f.L5, &f.lstYapilacakOdmID}, f.L4.listIndex());
    proposeAmount(f, f.L4.listIndex());
}

void L5_Click(FrmMainVeldona& f) {
    f.DuzeltKaynak = 2;
    follow({&f.L4, &f.lstYapilacakOdmID}, f.L5.listIndex());
    proposeAmount(f, f.L5.listIndex());
}

void rowList_Click(FrmMainVeldona& f, int row) {
    follow({&f.lstID, &f.List1, &f.List2, &f.List3, &f.List4, &f.List5, &f.List6, &f.List7}, row);
}

} // namespace veldona
