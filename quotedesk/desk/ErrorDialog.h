#pragma once

#include <QDialog>
#include <QString>

#include <functional>

namespace QuoteDesk
{

/// An error in plain words. What the engine said stands below, folded away, and can be copied.
class ErrorDialog : public QDialog
{
    Q_OBJECT
public:
    ErrorDialog(const QString &message, const QString &details, QWidget *parent);
    ~ErrorDialog() override;

    /// What the Copy button puts on the clipboard.
    QString text() const;

private:
    QString m_message;
    QString m_details;
};

/// Runs @p work; what it raises is shown in a dialog over @p parent. True when nothing was raised.
bool attempt(QWidget *parent, const std::function<void()> &work);

/// Shows the exception that is being handled in a dialog over @p parent. Inside a catch block only.
void showCurrentException(QWidget *parent);

} // namespace QuoteDesk
