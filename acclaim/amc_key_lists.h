#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "acclaim/amc_rows.h"
#include "mocap/mocap_model.h"
#include "textio/stand_ins.h"

// Stores the values of a motion while its number of frames is not known yet. There is one row for
// each frame, in the order of the file. The memory consists of blocks that are never moved. A
// channel may be added in a later frame. From that frame on, each row has a value for the channel.
class AmcKeyLists {
  public:
    // Begins the row of the frame with this number.
    void BeginFrame(int number) { numbers_.Append(number); }
    // Adds `count` channels after the existing ones. Call this after BeginFrame, and before you
    // append the first values of the new channels.
    void AddChannels(std::uint32_t count);
    // Appends the value of the next channel to the current row.
    void Append(double value) { values_.Append(value); }

    std::size_t Channels() const { return firstRows_.size(); }
    // How many rows there are.
    std::size_t Rows() const { return numbers_.Count(); }

    // Returns an array for each channel, with a key for each row. In the rows before a channel was
    // added, its keys have the channel's first value. If `read` has keys, they are inserted before
    // the row with the index read.first, and every channel must have been added before that row.
    // Frees the memory of the rows while it copies their values. Returns an empty vector when
    // memory for the keys runs out.
    std::vector<KeyArray> ReleaseKeys(AmcRows read = {});

  private:
    // Returns arrays with room for `rows` keys, with the keys that `read` has.
    std::vector<KeyArray> ArraysFor(std::size_t rows, AmcRows read) const;

    template <class Item>
    class Blocks {
      public:
        void Append(Item item) {
            if (used_ == kBlockItems) AddBlock();
            blocks_.back()[used_++] = item;
        }
        std::size_t Count() const {
            return blocks_.empty() ? 0 : (blocks_.size() - 1) * kBlockItems + used_;
        }
        const Item& operator[](std::size_t index) const {
            return blocks_[index / kBlockItems][index % kBlockItems];
        }
        // Frees every block whose items all have a lower index than `index`.
        void FreeBefore(std::size_t index) {
            for (; freed_ < index / kBlockItems; ++freed_)
                blocks_[freed_].reset();
        }

      private:
        static constexpr std::size_t kBlockItems = 4096;
        void AddBlock() {
            blocks_.push_back(textio::make_unique_for_overwrite<Item[]>(kBlockItems));
            used_ = 0;
        }

        std::vector<std::unique_ptr<Item[]>> blocks_;
        std::size_t used_ = kBlockItems;  // how many items of the last block are in use
        std::size_t freed_ = 0;           // how many blocks, counted from the first, are freed
    };

    Blocks<int> numbers_;  // the frame number of each row
    Blocks<double> values_;
    std::vector<std::size_t> firstRows_;  // for each channel, the row in which it was added
};
