#pragma once

#include "clock/clock.h"
#include "records/records.h"
#include "refusal/refusal.h"
#include "selling/salesservice.h"
#include "staff/staffservice.h"
#include "stock/inventoryservice.h"
#include "store/unitofwork.h"
#include "support/printers.h"
#include "support/refusalof.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

#include <optional>

// A salon on a fixed Tuesday morning: the staff book, and a till that asks it at checkout.
struct StaffScene : ::testing::Test {
    TestStore store;
    ModelContext& context = store.context();
    QDateTime now{QDate(2026, 3, 10), QTime(9, 15)};
    Clock::Override clock{[this] { return now; }};
    StaffService staff{context};
    InventoryService inventory{context};
    SalesService sales{context, inventory, &staff};
    Ref<AppSettings> settings = saved(std::make_shared<AppSettings>());

    template <class T> Ref<T> saved(Ref<T> record)
    {
        performUnitOfWork(context, [&] { context.insert(record); });
        return record;
    }
    template <class Change> void change(Change change) { performUnitOfWork(context, change); }

    Ref<Product> service(const char* name, double price, bool askForStaff = true,
                         std::optional<double> commissionRate = std::nullopt)
    {
        auto made = std::make_shared<Product>();
        made->setName(QString::fromUtf8(name));
        made->setSellingPrice(price);
        made->setProductType(ProductType::service);
        made->setAskForStaff(askForStaff);
        made->setCommissionRate(commissionRate);
        return saved(made);
    }
    Ref<StaffMember> member(const char* name, double rate, bool active = true)
    {
        auto made = std::make_shared<StaffMember>();
        made->setName(QString::fromUtf8(name));
        made->setCommissionRate(rate);
        made->setIsActive(active);
        return saved(made);
    }
    Ref<Customer> customer(const char* name, const char* phone = "")
    {
        auto made = std::make_shared<Customer>();
        made->setName(QString::fromUtf8(name));
        made->setPhone(QString::fromUtf8(phone));
        return saved(made);
    }
    // Today at hh:mm, for `minutes`, with the member when one is given.
    Ref<Appointment> booking(int hour, int minute, qint64 minutes, const Ref<StaffMember>& who = nullptr,
                             AppointmentStatus status = AppointmentStatus::booked, int daysFromToday = 0)
    {
        auto made = std::make_shared<Appointment>();
        made->setStart(QDateTime(now.date().addDays(daysFromToday), QTime(hour, minute)));
        made->setDurationMinutes(minutes);
        if (who) {
            made->setStaffID(who->id());
            made->setStaffName(who->name());
        }
        made->setServiceName(QStringLiteral("Haircut"));
        made->setStatus(status);
        return saved(made);
    }
    Ref<Sale> payCard(const Cart& cart)
    {
        const double total = cart.calculation(settings->taxInclusivePricing()).total;
        return sales.checkout(cart, {{PaymentMethodType::card, total, 0, {}}}, nullptr, nullptr, *settings);
    }
};
