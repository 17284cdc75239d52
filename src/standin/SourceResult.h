#pragma once

#include <QString>

namespace lullwick {

/// What asking one source (logind, a session manager, /sys/power) gave.
template <typename T> struct SourceResult {
    /// `unanswered`: the source did not answer before its deadline; reported like `missing`.
    enum State { read, missing, failed, unanswered };

    State state = read;
    QString message; ///< for `missing` and `failed`: one line for standard error
    T value{};

    [[nodiscard]] static SourceResult of(T value) { return {read, {}, std::move(value)}; }
    /// The source is not there; it holds nothing, which is not an error.
    [[nodiscard]] static SourceResult absent(QString why) { return {missing, std::move(why), {}}; }
    /// The source is there but could not be read.
    [[nodiscard]] static SourceResult failure(QString why) { return {failed, std::move(why), {}}; }
    /// The source did not answer in time.
    [[nodiscard]] static SourceResult silent(QString why) { return {unanswered, std::move(why), {}}; }
    /// Whether the source as a whole gives nothing: it failed or went silent.
    [[nodiscard]] bool endsSource() const { return state == failed || state == unanswered; }
};

} // namespace lullwick
