#pragma once

#include <QString>

#include <exception>

/// The message of the error that an action is expected to raise, for tests that look at what it names.
template <typename Error, typename Action> QString messageOf(Action action)
{
    try {
        action();
    } catch (const Error &error) {
        return error.message();
    } catch (const std::exception &error) {
        return QStringLiteral("another error: ") + QString::fromUtf8(error.what());
    }
    return QStringLiteral("no error");
}
