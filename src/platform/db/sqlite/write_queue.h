#pragma once

#include <QString>

#include <chrono>

namespace quilla {

/// The queue of the desks that want to write into one file. The engine gives its lock to whoever asks first
/// after it is free, which is nearly always the desk that has just let go of it: a busy desk would starve the
/// others. Here one desk at a time waits for that lock, and only from the head of the queue.
///
/// The queue is a lock on an empty file beside the database. Where that file can't be made, desks go on
/// without a queue. A desk that dies leaves the queue.
class WriteQueue {
public:
    explicit WriteQueue(const QString& database);
    ~WriteQueue();
    Q_DISABLE_COPY_MOVE(WriteQueue)

    /// The head of the queue, held until the end of its life. Waits for it no longer than `patience`: then
    /// the engine decides, as it does without a queue, which is a null pointer.
    class Head {
    public:
        Head(const WriteQueue* queue, std::chrono::milliseconds patience);
        ~Head();
        Q_DISABLE_COPY_MOVE(Head)

    private:
        int m_file;
    };

private:
    int m_file;
};

} // namespace quilla
