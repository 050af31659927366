#pragma once

#include <QFuture>
#include <QPromise>

#include <cstddef>
#include <utility>
#include <vector>

namespace tessary {

/// The outcomes of a known number of child tasks, taken in the order in which they come in.
template <typename Outcome>
class Completions
{
public:
    explicit Completions(std::size_t count) : m_promises(count)
    {
        for (QPromise<Outcome>& promise : m_promises) {
            promise.start();
        }
    }

    /// Called once by each child.
    void deliver(Outcome outcome)
    {
        QPromise<Outcome>& promise = m_promises.at(m_delivered++);
        promise.addResult(std::move(outcome));
        promise.finish();
    }

    /// The next outcome in time; called at most once for each child.
    [[nodiscard]] QFuture<Outcome> next() { return m_promises.at(m_taken++).future(); }

private:
    std::vector<QPromise<Outcome>> m_promises;
    std::size_t m_delivered = 0;
    std::size_t m_taken = 0;
};

} // namespace tessary
