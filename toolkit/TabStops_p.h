#pragma once

#include <QWidget>

namespace Zel
{
/// Lets a design set its tab order. The fields of a design that is not on a page yet follow each other in a
/// ring, in which the last one already stands before the first: Qt takes that for done and leaves the order
/// in which the fields were made. While this lives the frame itself is a stop between them.
///
/// Stands in the constructor from before setupUi to its end.
class DesignsTabOrder
{
public:
    explicit DesignsTabOrder(QWidget *frame) : m_frame(*frame), m_policy(frame->focusPolicy())
    {
        m_frame.setFocusPolicy(Qt::TabFocus);
    }
    ~DesignsTabOrder() { m_frame.setFocusPolicy(m_policy); }
    Q_DISABLE_COPY_MOVE(DesignsTabOrder)

private:
    QWidget &m_frame;
    const Qt::FocusPolicy m_policy;
};
} // namespace Zel
