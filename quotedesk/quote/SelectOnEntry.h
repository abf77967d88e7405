#pragma once

#include <QLineEdit>

namespace QuoteDesk
{

/// Lets a click into a field choose all that stands in it, as the Tab key does, so that what is typed takes
/// its place: in front of the "0.00" of a number, 250 would become 2500.00. A drag chooses what it goes over,
/// and a further click goes to its place in the text.
class SelectOnEntry : public QObject
{
    Q_OBJECT
public:
    /// Belongs to @p field.
    explicit SelectOnEntry(QLineEdit *field);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLineEdit *m_field;
    bool m_entered = false; ///< By the mouse, whose button is still down.
};

} // namespace QuoteDesk
