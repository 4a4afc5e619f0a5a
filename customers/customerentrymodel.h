#pragma once

#include "records/customer.h"
#include "startup/sessionstore.h"
#include "viewmodel/viewmodel.h"

#include <functional>

// What the sheets that change one customer's account share: the customer, the signed-in user's
// session, and a save that writes the change with its audit row in one unit of work before the
// sheet closes.
class CustomerEntryModel : public ViewModel {
public:
    Ref<Customer> customer() const { return m_customer; }

protected:
    CustomerEntryModel(SessionStore& session, Ref<Customer> customer, std::function<void()> onDone,
                       QObject* parent)
        : ViewModel(parent)
        , m_session(session)
        , m_customer(std::move(customer))
        , m_onDone(std::move(onDone))
    {
        Q_ASSERT(m_customer);
    }

    // `alongside` is written after `change` in the same unit of work; onDone follows a save only.
    template <class Change> bool saveThenDone(Change change, const std::function<void()>& alongside)
    {
        ModelContext* context = m_customer->context();
        Q_ASSERT(context);
        const bool saved = saveOrUndo(*context, [&] {
            change();
            if (alongside)
                alongside();
        });
        if (saved && m_onDone)
            m_onDone();
        return saved;
    }

    SessionStore& m_session;
    Ref<Customer> m_customer;

private:
    std::function<void()> m_onDone;
};
