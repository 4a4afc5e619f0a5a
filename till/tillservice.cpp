#include "till/tillservice.h"

#include "store/storeerror.h"

TillService::TillService(ModelContext& context)
    : m_context(context)
{
}

Ref<TillShift> TillService::currentOpenShift()
{
    try {
        return m_context.fetchFirst<TillShift>(FetchDescriptor(TillShift::Col::statusRaw == openStatus()));
    } catch (const StoreError&) {
        return nullptr;
    }
}
