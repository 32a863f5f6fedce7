// Errors are values: an operation returns what it made, or the sentence that says why it made nothing.
#pragma once

#include <QString>
#include <optional>
#include <utility>

namespace platform {

// Why an operation was refused, as one sentence for the status bar.
struct Failure
{
    QString reason;
};

// A value, or the failure that took its place. Nothing was changed when it holds a failure.
template <typename T>
class [[nodiscard]] Result
{
public:
    Result(T value) : value_(std::move(value)) { }
    Result(Failure failure) : reason_(std::move(failure.reason)) { }

    bool ok() const { return value_.has_value(); }
    explicit operator bool() const { return ok(); }

    // The value; only to be asked for when ok().
    const T &operator*() const { return *value_; }
    T &operator*() { return *value_; }
    const T *operator->() const { return &*value_; }

    // Why there is no value; empty when ok().
    QString reason() const { return reason_; }

private:
    std::optional<T> value_;
    QString reason_;
};

// The same for operations that only do something.
template <>
class [[nodiscard]] Result<void>
{
public:
    Result() = default;
    Result(Failure failure) : failed_(true), reason_(std::move(failure.reason)) { }

    bool ok() const { return !failed_; }
    explicit operator bool() const { return ok(); }
    QString reason() const { return reason_; }

private:
    bool failed_ = false;
    QString reason_;
};

} // namespace platform
