// The frames of an AMC file that are rows: a line with the frame number, then a line for each bone
// with its name and its values.
#pragma once

#include <cstddef>
#include <vector>

#include "mocap/mocap_model.h"
#include "mocap/row_blocks.h"

// Frames that were read in rows. They follow each other in the file.
struct AmcRows {
    std::vector<KeyArray> keys;  // one array for each channel; empty if no rows were read
    std::size_t capacity = 0;    // how many keys an array has room for
    std::size_t first = 0;       // the index of the first key that a row has set
    std::size_t count = 0;       // how many keys of an array were set
};

// Reads one row, with the bones in the order of the rows before.
class AmcRowReader : public RowBlocks::Reader {
  public:
    // A value of a bone. The values of channels that are not imported are stored, too.
    struct Value {
        const MOCAPMODEL::CHANNELS* channel;
        double* numbers;  // one for each row
    };
    struct Bone {
        std::size_t firstValue;
        std::size_t values;
    };
    // Converts a value of a row from the file's unit, and limits it.
    class Converter {
      public:
        virtual ~Converter() = default;
        // Whether Convert changes values of the channel.
        virtual bool Changes(const MOCAPMODEL::CHANNELS& channel) const noexcept = 0;
        virtual double Convert(const MOCAPMODEL::CHANNELS& channel,
                               double value) const noexcept = 0;
    };

    // Adds the next bone of a row, with its values. Throws std::bad_alloc.
    void Add(const std::vector<Value>& values, const Converter& converter);
    // The frame number of each row is stored here.
    void SetTimes(double* times) { times_ = times; }

    const char* ReadRow(const char* at, const char* last, std::size_t row) const noexcept override;

    std::size_t Lines() const { return bones_.size() + 1; }
    // How many values a row has.
    std::size_t Values() const { return numbers_.size(); }

  private:
    std::vector<Bone> bones_;
    std::vector<double*> numbers_;
    std::vector<Value> converted_;
    const Converter* converter_ = nullptr;
    double* times_ = nullptr;
};

// Counts the rows that the text from `first` to `last` has if each of them has `lines` lines.
std::size_t CountRows(const char* first, const char* last, std::size_t lines, std::size_t threads);
