#include "event_conveyor.h"

#include <system_error>
#include <utility>

#include "console.h"

void EventBatch::Clear()
{
    constexpr std::size_t kMostKept = 16 * 1024 * 1024;  // bytes; a large event may have been in it
    minutes.clear();
    count = imageBytes = 0;
    data_.clear();
    if (data_.capacity() > kMostKept) data_.shrink_to_fit();
}

void Conveyor::Put(std::unique_ptr<EventBatch> batch)
{
    std::unique_lock lock(mutex_);
    WaitUntil(lock, [&] { return !waiting_; });
    waiting_ = std::move(batch);
    ++given_;
    AddThread(lock);
    changed_.notify_all();
}

void Conveyor::Finish()
{
    std::unique_lock lock(mutex_);
    WaitUntil(lock, [&] { return finished_ == given_; });
}

void Conveyor::Stop() noexcept
{
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_all();
    for (std::thread& thread : threads_) thread.join();
    threads_.clear();
}

std::uint64_t Conveyor::committed() const
{
    const std::lock_guard lock(mutex_);
    return committed_;
}

std::unique_ptr<EventBatch> Conveyor::TakeStored()
{
    const std::lock_guard lock(mutex_);
    if (stored_.empty()) return nullptr;
    std::unique_ptr<EventBatch> batch = std::move(stored_.back());
    stored_.pop_back();
    return batch;
}

// Meanwhile it says what there is to be said.
void Conveyor::WaitUntil(std::unique_lock<std::mutex>& lock, const std::function<bool()>& holds)
{
    for (bool done = false; !done;) {
        changed_.wait(lock, [&] { return failure_ || !messages_.empty() || holds(); });
        done = messages_.empty();
        for (const std::string& message : std::exchange(messages_, {})) say_(message);
    }
    if (failure_) std::rethrow_exception(failure_);
}

void Conveyor::AddThread(std::unique_lock<std::mutex>& lock)
{
    if (idle_ > 0 || full_) return;
    lock.unlock();  // a worker takes its time to come
    Work work = more_(threads_.size());
    lock.lock();
    full_ = !work;
    if (!work) return;
    try {
        threads_.emplace_back([this, work = std::move(work)] { Run(work); });
    } catch (const std::system_error&) {
        // The system has no thread for it. Those that are there do the work, more slowly.
        full_ = true;
        if (threads_.empty()) throw;
    }
}

void Conveyor::WaitForTurn(std::uint64_t number)
{
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return finished_ == number || failure_ || ending_; });
    if (finished_ != number || failure_ || ending_) throw GivenUp();
}

void Conveyor::Add(std::string message)
{
    const std::lock_guard lock(mutex_);
    messages_.push_back(std::move(message));
    changed_.notify_all();
}

// What it threw; nothing when the batch is committed, or is not to be.
std::exception_ptr Conveyor::Fault(const Work& work, EventBatch& batch, std::uint64_t number, bool& stored)
{
    try {
        Turn turn(*this, number);
        work(batch, turn);
        stored = true;
        return nullptr;
    } catch (const GivenUp&) {
        return nullptr;
    } catch (...) {
        const std::exception_ptr fault = std::current_exception();
        try {
            WaitForTurn(number);  // those before it may still be committed, and count
            return fault;
        } catch (const GivenUp&) {
            return nullptr;
        }
    }
}

void Conveyor::Run(const Work& work)
{
    LeaveInterruptsToOthers();
    std::unique_lock lock(mutex_);
    for (bool stored = true; stored;) {
        ++idle_;
        changed_.wait(lock, [&] { return waiting_ || failure_ || ending_; });
        --idle_;
        if (failure_ || ending_) return;
        std::unique_ptr<EventBatch> batch = std::move(waiting_);
        const std::uint64_t number = given_ - 1;
        changed_.notify_all();
        lock.unlock();
        stored = false;
        const std::exception_ptr fault = Fault(work, *batch, number, stored);
        const std::uint64_t count = batch->count;
        batch->Clear();
        lock.lock();
        finished_ += stored;
        committed_ += stored ? count : 0;
        stored_.push_back(std::move(batch));
        if (fault) failure_ = fault;
        changed_.notify_all();
    }
}
