#pragma once

#include "store/modelcontext.h"

#include <type_traits>

// Every write of the program runs inside one: commit() saves what the work changed in one
// transaction; leaving the scope without a commit (an exception of any type, a refusal, an early
// return) rolls back every change since the work began, so memory equals the file afterwards.
// A unit begun inside another joins it: only the outermost one saves, and a failure anywhere
// undoes the whole.
class UnitOfWork {
public:
    explicit UnitOfWork(ModelContext& context);
    UnitOfWork(const UnitOfWork&) = delete;
    UnitOfWork& operator=(const UnitOfWork&) = delete;
    ~UnitOfWork();

    // Throws StoreError after rolling back when the save fails.
    void commit();

private:
    ModelContext& m_context;
    bool m_outermost;
    bool m_committed = false;
};

// Runs `work` as one unit of work and gives back what it returned.
template <class Work> auto performUnitOfWork(ModelContext& context, Work&& work) -> std::invoke_result_t<Work>
{
    UnitOfWork unit(context);
    if constexpr (std::is_void_v<std::invoke_result_t<Work>>) {
        work();
        unit.commit();
    } else {
        auto result = work();
        unit.commit();
        return result;
    }
}
