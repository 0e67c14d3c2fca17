// Reads the rows of a motion on several threads.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>

#include "textio/row_reader.h"

// Divides a text into blocks of lines, and reads each line as a row. Several threads read blocks at
// the same time. The thread that calls Read learns how many rows have been read from the start of
// the text, without a gap, and can stop the others.
class RowBlocks {
  public:
    // The text goes from `first` to `last`, where a NUL must be. It should have `rows` rows.
    RowBlocks(const char* first, const char* last, const textio::RowTarget& target,
              std::size_t rows);

    // Is told that the rows before `rows` have been read. Returns whether to go on.
    class Listener {
      public:
        virtual ~Listener() = default;
        virtual bool HasRead(std::size_t rows) = 0;
    };

    // Reads rows on `threads` threads, the calling one included. Stops before the first line that
    // is not a row, or when the listener returns false. Only the calling thread calls the listener.
    // If memory runs out, reads no row.
    void Read(std::size_t threads, Listener& listener);

    // The number of rows that Read has read from the start of the text, without a gap.
    std::size_t RowsRead() const { return rowsRead_; }
    // The start of the line of a row that has been read.
    const char* StartOf(std::size_t row) const;

  private:
    struct Block {
        const char* first = nullptr;
        std::size_t rowsRead = 0;
        std::atomic<bool> isFinished = false;
    };

    static void Help(void* blocks) noexcept;
    bool Allocate(std::size_t threads);
    // Reserves the next block for the calling thread. Returns false if there is none.
    bool Reserve(std::size_t& block);
    void ReadBlock(std::size_t block);
    // Calls the listener for all blocks that are finished. Returns whether to go on.
    bool Report(Listener& listener);
    void Stop();

    const char* last_;
    const textio::RowTarget& target_;
    std::size_t rows_;
    std::size_t blockRows_ = 1;  // every block has as many rows, but the last one may have fewer
    std::size_t blockCount_ = 0;
    std::unique_ptr<Block[]> blocks_;

    std::mutex mutex_;  // for the next two members
    std::size_t nextBlock_ = 0;
    const char* nextFirst_;  // the start of the next block; null if there is none

    std::size_t reported_ = 0;  // the number of blocks of which the listener was told
    std::size_t rowsRead_ = 0;
};
