#pragma once

#include <QLineEdit>

namespace QuoteDesk
{

/// Makes a click into a field select its whole text, as the Tab key does, so that typing replaces it: before
/// the "0.00" of a number, 250 would become 2500.00. A drag selects what it covers, and a further click sets
/// the cursor.
class SelectOnEntry : public QObject
{
    Q_OBJECT
public:
    /// Becomes a child of @p field.
    explicit SelectOnEntry(QLineEdit *field);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLineEdit *m_field;
    bool m_entered = false; ///< by a mouse button that is still pressed
};

} // namespace QuoteDesk
