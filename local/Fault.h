#pragma once

#include <QByteArray>

#include <chrono>
#include <optional>

namespace tessary::local {

/// What a request is answered with.
struct Answer
{
    int status = 200;
    QByteArray body;
    QByteArray contentType = "application/json";
    QByteArray location = {}; ///< where a redirect leads; sent by an answer that is broken off only
};

/// What is to go wrong with one request. The parts combine; the answer is the service's own unless one is
/// given.
struct Fault
{
    std::chrono::milliseconds delay{0};
    std::optional<Answer> answer;
    std::optional<qsizetype>
        breakOffAfter; ///< bytes of the body that are sent before the connection is closed
    bool unanswered = false;

    static Fault late(std::chrono::milliseconds delay) { return {delay, {}, {}, false}; }

    static Fault answered(Answer answer) { return {{}, std::move(answer), {}, false}; }

    static Fault brokenOff(qsizetype after) { return {{}, {}, after, false}; }

    static Fault redirected(const QByteArray& location)
    {
        return {{}, Answer{302, {}, {}, location}, 0, false};
    }

    static Fault neverAnswered() { return {{}, {}, {}, true}; }
};

} // namespace tessary::local
