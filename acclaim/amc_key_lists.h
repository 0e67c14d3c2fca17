#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "mocap/mocap_model.h"
#include "textio/stand_ins.h"

// The values of a motion whose number of frames is not known yet: a row for each frame, in the
// order of the file, in blocks that never move. A channel may be added in a later frame; from then
// on each row has a value for it.
class AmcKeyLists {
  public:
    // Begins the row of the frame with this number.
    void BeginFrame(int number) { numbers_.Append(number); }
    // Adds `count` channels after the existing ones. Called after BeginFrame, before their first
    // values are appended.
    void AddChannels(std::uint32_t count);
    // Appends the row's next value.
    void Append(double value) { values_.Append(value); }

    // Returns an array for each channel, with a key for each row. The rows before a channel was
    // added get its first value. The memory of the rows is freed while their values are copied. The
    // result is empty when memory runs out.
    std::vector<KeyArray> ReleaseKeys();

  private:
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
        // Frees every block that ends before `index`.
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
        std::size_t used_ = kBlockItems;  // in the last block
        std::size_t freed_ = 0;
    };

    Blocks<int> numbers_;
    Blocks<double> values_;
    std::vector<std::size_t> firstRows_;  // of each channel, in rising order
};
