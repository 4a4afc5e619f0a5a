#include "store/unitofwork.h"

#include "store/storeerror.h"

UnitOfWork::UnitOfWork(ModelContext& context)
    : m_context(context)
    , m_outermost(context.m_workDepth == 0)
{
    // Forms edit drafts and write them inside a unit of work: anything pending here would be
    // someone's half-typed edit, saved or lost by work that isn't theirs.
    Q_ASSERT_X(!m_outermost || !context.hasChanges(), "UnitOfWork",
               "changes were left pending between two actions");
    ++context.m_workDepth;
}

UnitOfWork::~UnitOfWork()
{
    --m_context.m_workDepth;
    if (m_committed)
        return;
    try {
        m_context.rollback();
    } catch (const std::exception& error) {
        // The file keeps its last commit whatever happens here; only memory may now be ahead.
        qCCritical(lcStore) << "A failed change could not be undone in memory:" << error.what();
    }
}

void UnitOfWork::commit()
{
    Q_ASSERT(!m_committed);
    if (m_outermost)
        m_context.save(); // a throw leaves m_committed false: the destructor rolls back
    m_committed = true;
}
