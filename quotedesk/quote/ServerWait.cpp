#include "quote/ServerWait.h"

#include "database/StoreError.h"

#include <QCoreApplication>
#include <QProgressDialog>

namespace QuoteDesk
{
namespace
{

/// The time before a wait is displayed, in milliseconds.
constexpr int QuietMs = 300;

} // namespace

ServerWait::ServerWait(QWidget *parent, WaitsWith box) : m_parent(parent), m_box(box) {}

ServerWait::~ServerWait() = default;

void ServerWait::end()
{
    m_ended = true;
    m_loop.quit();
}

void ServerWait::run()
{
    if (m_ended)
        return;
    if (m_box == WaitsWith::BoxOfItsOwn) {
        // Even when the program is told to quit, because the work refers to the caller's variables.
        while (!m_ended)
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        return;
    }
    QTimer::singleShot(QuietMs, &m_loop, &QEventLoop::quit);
    m_loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (m_ended)
        return;
    QProgressDialog box(tr("Waiting for the office's server ..."), tr("Cancel"), 0, 0, m_parent);
    box.setWindowModality(Qt::ApplicationModal);
    box.setMinimumDuration(0);
    connect(&box, &QProgressDialog::canceled, &m_loop, &QEventLoop::quit);
    box.show();
    m_loop.exec();
    if (!m_ended)
        throw StoreUnreachable(tr(
            "The office's server has not answered yet. Check in a moment whether the change has been made."));
}

} // namespace QuoteDesk
