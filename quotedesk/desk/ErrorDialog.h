#pragma once

#include <QDialog>
#include <QString>

#include <functional>

namespace QuoteDesk
{

/// An error in plain words. The engine's message is below it, collapsed, and can be copied.
class ErrorDialog : public QDialog
{
    Q_OBJECT
public:
    ErrorDialog(const QString &message, const QString &details, QWidget *parent);
    ~ErrorDialog() override;

    /// The text that the Copy button copies.
    QString text() const;

private:
    QString m_message;
    QString m_details;
};

/// Runs @p work and shows its exception in a dialog over @p parent. Returns whether there was none.
bool attempt(QWidget *parent, const std::function<void()> &work);

/// Shows the current exception in a dialog over @p parent. Call inside a catch block.
void showCurrentException(QWidget *parent);

} // namespace QuoteDesk
