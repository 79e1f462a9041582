// Threads that work on items of a ring; the items come back in the order in which they were handed in. The ring bounds
// what lies in memory, and its items are used again.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace cephtool {

// One thread hands in and takes back; `make_worker` is called once by each of the others, and what it returns must not
// throw.
template <class Item>
class OrderedPool {
 public:
    using Worker = std::function<void(Item&)>;

    OrderedPool(std::size_t threads, std::size_t ring, std::function<Worker()> make_worker) : ring_(ring) {
        threads_.reserve(threads);
        try {
            for (std::size_t i = 0; i < threads; ++i)
                threads_.emplace_back([this, make_worker] { run(make_worker()); });
        } catch (const std::system_error&) {  // the system has no more: those that began do the work
            if (threads_.empty()) throw;
        }
    }
    ~OrderedPool() {
        {
            const std::lock_guard lock(mutex_);
            ending_ = true;
        }
        work_.notify_all();
        for (std::thread& thread : threads_) thread.join();
    }
    OrderedPool(const OrderedPool&) = delete;
    OrderedPool& operator=(const OrderedPool&) = delete;

    bool is_full() const { return handed_in_ - taken_back_ == ring_.size(); }
    bool is_empty() const { return handed_in_ == taken_back_; }

    // The next item to be filled and handed in; the pool must not be full.
    Item& free_item() { return ring_[handed_in_ % ring_.size()].item; }
    void hand_in() {
        {
            const std::lock_guard lock(mutex_);
            ring_[handed_in_ % ring_.size()].done = false;
            ++handed_in_;
        }
        work_.notify_one();
    }

    // Waits for the oldest item, which stays its own until it is taken back; the pool must not be empty.
    Item& oldest() {
        Slot& slot = ring_[taken_back_ % ring_.size()];
        std::unique_lock lock(mutex_);
        done_.wait(lock, [&] { return slot.done; });
        return slot.item;
    }
    void take_back() { ++taken_back_; }

 private:
    struct Slot {
        Item item;
        bool done = false;
    };

    void run(const Worker& worker) {
        for (;;) {
            std::unique_lock lock(mutex_);
            work_.wait(lock, [&] { return ending_ || begun_ < handed_in_; });
            if (ending_) return;
            Slot& slot = ring_[begun_++ % ring_.size()];
            lock.unlock();
            worker(slot.item);
            lock.lock();
            slot.done = true;
            lock.unlock();
            done_.notify_one();
        }
    }

    std::vector<Slot> ring_;
    std::mutex mutex_;
    std::condition_variable work_, done_;
    std::size_t handed_in_ = 0, begun_ = 0, taken_back_ = 0;  // counted from the beginning
    bool ending_ = false;
    std::vector<std::thread> threads_;  // last, so that all else is there when they begin
};

}  // namespace cephtool
