#pragma once

#include <QByteArray>
#include <functional>

enum ExitStatus { StatusGood = 0, StatusFound = 1, StatusFailed = 2 };

/// Prints to standard output. Throws RunTimeFailure where that cannot be written.
void Print(const QByteArray& bytes);

/// Sends what has been printed on its way. Throws RunTimeFailure.
void FlushOutput();

/// Tells of a failure on standard error and gives StatusFailed.
int TellFailure(const char* reason);

/// Runs `work` and gives its status. A failure is told on standard error.
int StatusOf(const std::function<int()>& work);
