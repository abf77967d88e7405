#pragma once

#include <QWidget>

namespace Zel
{
/// Works around a defect of Qt in setting the tab order of a design. The focus chain is a ring. In a design
/// without a parent, the last field therefore already precedes the first, and Qt skips the new order. During
/// the lifetime of this object the frame itself is a tab stop between the last and the first field.
///
/// Create it in the frame's constructor before setupUi; it must exist until the end of the constructor.
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
