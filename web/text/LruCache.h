#pragma once

#include <cstddef>
#include <list>
#include <unordered_map>
#include <utility>

// A map that forgets its least recently used entry once it holds `capacity` entries. The text
// layer keeps parsed fonts, resolved faces and shaped runs in these, so that a script drawing
// the same text every frame pays once, and one writing thousands of different strings stays
// within a fixed amount of memory. Not thread-safe.
template <typename Key, typename Value, typename Hash = std::hash<Key>>
class LruCache {
public:
    explicit LruCache(std::size_t capacity) : capacity_(capacity ? capacity : 1) {}

    // The value for `key`, marked as just used, or null.
    Value* find(const Key& key)
    {
        auto it = index_.find(key);
        if (it == index_.end())
            return nullptr;
        entries_.splice(entries_.begin(), entries_, it->second);
        return &it->second->second;
    }

    // Stores `value` under `key` (replacing an old value) and returns it.
    Value& insert(const Key& key, Value value)
    {
        if (auto it = index_.find(key); it != index_.end()) {
            it->second->second = std::move(value);
            entries_.splice(entries_.begin(), entries_, it->second);
            return it->second->second;
        }
        if (entries_.size() >= capacity_) {
            index_.erase(entries_.back().first);
            entries_.pop_back();
        }
        entries_.emplace_front(key, std::move(value));
        index_.emplace(entries_.front().first, entries_.begin());
        return entries_.front().second;
    }

    void clear()
    {
        index_.clear();
        entries_.clear();
    }

    std::size_t size() const { return entries_.size(); }
    std::size_t capacity() const { return capacity_; }

private:
    using Entry = std::pair<Key, Value>;
    std::size_t capacity_;
    std::list<Entry> entries_;
    std::unordered_map<Key, typename std::list<Entry>::iterator, Hash> index_;
};
