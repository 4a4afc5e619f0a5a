#pragma once

#include "records/tillshift.h"
#include "store/modelcontext.h"

// Till shifts and the cash that moves during them.
class TillService {
public:
    static QString openStatus() { return QStringLiteral("open"); }

    explicit TillService(ModelContext& context);

    // The shift left open, by this session or an earlier launch; absent also when the store
    // can't be read, since the callers have nowhere to report that.
    Ref<TillShift> currentOpenShift();

private:
    ModelContext& m_context;
};
