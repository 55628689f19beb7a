// Batches of events on their way into a store: threads of its own store them while the next one is filled. Whatever the
// threads do at the same time, batches are committed in the order in which they were given.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "event_counts.h"

struct NewEvent;

// Events as a home takes them.
class EventBatch {
public:
    EventBatch() = default;
    virtual ~EventBatch() = default;
    EventBatch(const EventBatch&) = delete;
    EventBatch& operator=(const EventBatch&) = delete;

    virtual void Add(const NewEvent& event) = 0;
    // For other events, in the memory that it has.
    virtual void Clear();

    EventCounts minutes;
    std::uint64_t count = 0;
    std::uint64_t imageBytes = 0;

protected:
    std::string data_;
};

class Conveyor {
public:
    // One batch in the hands of a thread.
    class Turn {
    public:
        Turn(Conveyor& conveyor, std::uint64_t number) : conveyor_(conveyor), number_(number) {}
        // Until all batches before it are committed. Throws when this one is not to be committed any more.
        void Wait() { conveyor_.WaitForTurn(number_); }
        // Is told to the user by the thread that gives the batches.
        void Say(std::string message) { conveyor_.Add(std::move(message)); }

    private:
        Conveyor& conveyor_;
        std::uint64_t number_;
    };
    // Stores a batch. It waits for its turn before it commits; what it throws ends the storing.
    using Work = std::function<void(EventBatch& batch, Turn& turn)>;
    // A further worker, for a thread of its own, counted from 0; an empty one when there is none.
    using More = std::function<Work(std::size_t number)>;
    using Say = std::function<void(const std::string& message)>;

    explicit Conveyor(More more, Say say = {}) : more_(std::move(more)), say_(std::move(say)) {}
    Conveyor(const Conveyor&) = delete;
    Conveyor& operator=(const Conveyor&) = delete;
    ~Conveyor() { Stop(); }

    // Waits while all threads are busy. Throws what a worker has thrown; nothing is committed afterwards.
    void Put(std::unique_ptr<EventBatch> batch);
    // Waits until all that was given is committed, or throws likewise.
    void Finish();
    // Leaves out what is not committed yet.
    void Stop() noexcept;
    std::uint64_t committed() const;  // events
    // One that was stored and is to be filled again; empty when there is none.
    std::unique_ptr<EventBatch> TakeStored();

private:
    struct GivenUp {};

    void WaitForTurn(std::uint64_t number);
    void Add(std::string message);
    void Run(const Work& work);
    std::exception_ptr Fault(const Work& work, EventBatch& batch, std::uint64_t number, bool& stored);
    void WaitUntil(std::unique_lock<std::mutex>& lock, const std::function<bool()>& holds);
    void AddThread(std::unique_lock<std::mutex>& lock);

    More more_;
    Say say_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::thread> threads_;
    std::unique_ptr<EventBatch> waiting_;
    std::vector<std::unique_ptr<EventBatch>> stored_;
    std::vector<std::string> messages_;
    std::size_t idle_ = 0;
    std::uint64_t given_ = 0;     // batches
    std::uint64_t finished_ = 0;  // of them
    std::uint64_t committed_ = 0;
    std::exception_ptr failure_;
    bool ending_ = false;
    bool full_ = false;  // there are no more workers
};
