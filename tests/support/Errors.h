#pragma once

#include <QString>

#include <exception>

/// The message of the error that @p action is expected to throw, for tests that check what the message says.
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
