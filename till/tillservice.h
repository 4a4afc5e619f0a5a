#pragma once

#include "records/tillshift.h"
#include "records/user.h"
#include "store/modelcontext.h"

// Till shifts and the cash that moves during them. One shift is open at a time for the whole store.
class TillService {
public:
    static QString openStatus() { return QStringLiteral("open"); }
    static QString closedStatus() { return QStringLiteral("closed"); }

    explicit TillService(ModelContext& context);

    // The shift left open, by this session or an earlier launch. Throws StoreError when the store
    // can't be read: that is not "no shift open", which would let a second one be opened.
    Ref<TillShift> currentOpenShift();

    // One unit of work. Throws TillError when any shift is open or the float is negative (0 is
    // allowed), StoreError when the save fails; either way nothing was written.
    Ref<TillShift> openShift(const Ref<User>& cashier, double openingFloat);
    // Cash payments of the shift's sales that aren't voided, refunds lowering it; in cents.
    double cashSalesTotal(const Ref<TillShift>& shift);
    // Float, cash sales, cash for accounts and pay-ins, less pay-outs; rounded once, in cents.
    double expectedCash(const Ref<TillShift>& shift);
    // Freezes the figures in one unit of work. A failed save puts the shift back as it was, open,
    // so the close can be tried again; the shift's state is not checked. `closedBy` may be absent.
    Ref<TillShift> closeShift(const Ref<TillShift>& shift, double countedCash, const QString& notes,
                              const Ref<User>& closedBy = nullptr);

private:
    ModelContext& m_context;
};
