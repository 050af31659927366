#pragma once

#include <QByteArray>

#include <chrono>
#include <optional>
#include <utility>

namespace tessary::standins {

/// What a request is answered with.
struct Answer
{
    int status = 200;
    QByteArray body;
    QByteArray contentType = "application/json";
    QByteArray location = {}; ///< where a redirect leads; sent by an answer that is broken off only
};

/// How far an answer gets, and what its connection comes to then.
struct Breakage
{
    enum class Sent { Nothing, HalfTheHeader, HalfTheBody, Everything };
    enum class End {
        Closed,
        Reset,
        Dripping ///< a space now and then, for as long as the client listens
    };

    Sent sent;
    End end;
};

/// What is to go wrong with one request. The parts combine; the answer is the service's own unless one is
/// given.
struct Fault
{
    std::chrono::milliseconds delay{0};
    std::optional<Answer> answer;
    std::optional<Breakage> breakage;
    bool unanswered = false;

    static Fault late(std::chrono::milliseconds delay) { return {delay, {}, {}, false}; }

    static Fault answered(Answer answer) { return {{}, std::move(answer), {}, false}; }

    static Fault broken(Breakage::Sent sent, Breakage::End end)
    {
        return {{}, {}, Breakage{sent, end}, false};
    }

    /// A complete answer but for its end, which never comes.
    static Fault endless() { return broken(Breakage::Sent::Everything, Breakage::End::Dripping); }

    static Fault redirected(int status, const QByteArray& location)
    {
        return {{},
                Answer{status, {}, {}, location},
                Breakage{Breakage::Sent::Everything, Breakage::End::Closed},
                false};
    }

    static Fault neverAnswered() { return {{}, {}, {}, true}; }
};

} // namespace tessary::standins
