#pragma once

#include "data/Currency.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace QuoteDesk
{

/// A finished split of an investment over funds, as the allocation frame gave it back.
struct AllocationResult {
    struct Fund {
        int id = 0;
        QString name;
        Currency percent;
        Currency amount; ///< rand, whole cents
    };

    Currency investment; ///< rand
    bool byAmount = false;
    Currency remainingPercent;
    QList<Fund> funds;

    /// The investment less the amounts; negative when more is given out than there is.
    Currency remainingAmount() const;
    bool isComplete() const { return remainingAmount().isZero(); }

    /// A table for people: fund, percent, amount, and what remains after each fund.
    QString toTable() const;
    /// One JSON object on one line; money and percentages as text with two decimals.
    QByteArray toJson() const;
};

} // namespace QuoteDesk
