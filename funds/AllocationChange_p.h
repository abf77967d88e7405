#pragma once

#include "funds/fra_FundAllocation.h"
#include "toolkit/TApplication.h"

#include <algorithm>
#include <optional>
#include <utility>

/// Delays updates of the status captions during its lifetime, so that a command over all rows writes them
/// once.
class TfraFundAllocation::CaptionBatch
{
public:
    explicit CaptionBatch(TfraFundAllocation &frame) : m_frame(frame) { ++m_frame.m_captionBatches; }
    ~CaptionBatch()
    {
        if (--m_frame.m_captionBatches == 0 && std::exchange(m_frame.m_captionDue, false))
            m_frame.UpdateRemainingCaption();
    }
    Q_DISABLE_COPY_MOVE(CaptionBatch)

private:
    TfraFundAllocation &m_frame;
};

/// Compares the allocation before and after its lifetime and emits AllocationChanged once, when the outermost
/// scope ends. Declare it before a CaptionBatch, so that the captions are updated before the signal.
class TfraFundAllocation::Change
{
public:
    /// For a command: compares the whole allocation.
    explicit Change(TfraFundAllocation &frame) : m_frame(frame), m_outermost(frame.m_changes++ == 0)
    {
        if (!m_outermost)
            return;
        m_before = frame.Allocation();
        m_investment = frame.m_investmentAmount;
        m_byAmount = frame.m_allocByAmount;
    }
    /// For an edit of one row: compares only that row, so that the time does not depend on the number of
    /// rows.
    Change(TfraFundAllocation &frame, int row)
        : m_frame(frame), m_row(row), m_outermost(frame.m_changes++ == 0)
    {
        if (const TFundRec *const record = m_outermost ? frame.recordOf(row) : nullptr)
            m_recordBefore = *record;
    }
    ~Change()
    {
        --m_frame.m_changes;
        if (!m_outermost || !changed())
            return;
        GuardedCall([this] {
            const QPointer<TfraFundAllocation> frame(&m_frame); // a slot may delete the frame
            if (m_row > 0)
                Q_EMIT m_frame.AllocationRowChanged(m_row);
            if (frame)
                Q_EMIT frame->AllocationChanged();
        });
    }
    Q_DISABLE_COPY_MOVE(Change)

private:
    bool changed() const
    {
        if (m_row > 0) {
            const TFundRec *const record = m_frame.recordOf(m_row);
            return record && m_recordBefore &&
                   (record->Amount != m_recordBefore->Amount || record->Percent != m_recordBefore->Percent);
        }
        return m_investment != m_frame.m_investmentAmount || m_byAmount != m_frame.m_allocByAmount ||
               !std::equal(m_before.cbegin(), m_before.cend(), m_frame.m_funds.begin(), m_frame.m_funds.end(),
                           [](const TAllocationRow &row, const TFundRec &record) {
                               return row.FundID == record.FundID && row.Amount == record.Amount &&
                                      row.Percent == record.Percent;
                           });
    }

    TfraFundAllocation &m_frame;
    int m_row = 0; ///< 0 for a command
    bool m_outermost;
    QList<TAllocationRow> m_before;
    Currency m_investment;
    bool m_byAmount = false;
    std::optional<TFundRec> m_recordBefore;
};
