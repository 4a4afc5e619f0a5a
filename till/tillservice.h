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

    // The shift left open, by this session or an earlier launch; absent also when the store
    // can't be read, since the callers have nowhere to report that.
    Ref<TillShift> currentOpenShift();

    // Saves. Throws TillError when any shift is open or the float is negative (0 is allowed),
    // StoreError when the save fails, after rolling back so that a retry isn't refused as open.
    Ref<TillShift> openShift(const Ref<User>& cashier, double openingFloat);
    // Cash payments of the shift's sales that aren't voided, refunds lowering it; in cents.
    double cashSalesTotal(const Ref<TillShift>& shift);
    // Float, cash sales, cash for accounts and pay-ins, less pay-outs; rounded once, in cents.
    double expectedCash(const Ref<TillShift>& shift);
    // Freezes the figures and saves. A failed save leaves the changed fields pending, so the
    // close can be tried again; the shift's state is not checked.
    Ref<TillShift> closeShift(const Ref<TillShift>& shift, double countedCash, const QString& notes);

private:
    ModelContext& m_context;
};
