// Reads the rows of a motion on several threads.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>

// Divides a text into blocks of rows, which have the same number of lines. Several threads read
// blocks at the same time. The thread that calls Read learns how many rows have been read from the
// start of the text, without a gap, and can stop the others.
class RowBlocks {
  public:
    // Several threads call this at the same time, each for other rows.
    class Reader {
      public:
        virtual ~Reader() = default;
        // Reads the row with this index, which begins at `at`. Returns the start of the next row.
        // Returns null if this is not a row with the expected number of lines.
        virtual const char* ReadRow(const char* at, const char* last,
                                    std::size_t row) const noexcept = 0;
    };

    // The text goes from `first` to `last`, where a NUL must be. It should have `rows` rows of
    // `lines` lines each.
    RowBlocks(const char* first, const char* last, const Reader& reader, std::size_t lines,
              std::size_t rows);

    // Is told that the rows before `rows` have been read. Returns whether to go on.
    class Listener {
      public:
        virtual ~Listener() = default;
        virtual bool HasRead(std::size_t rows) = 0;
    };

    // Reads rows on `threads` threads, the calling one included. Stops before the first row that
    // the reader refuses, or when the listener returns false. Only the calling thread calls the
    // listener. If memory runs out, reads no row.
    void Read(std::size_t threads, Listener& listener);

    // The number of rows that Read has read from the start of the text, without a gap.
    std::size_t RowsRead() const { return rowsRead_; }
    // The start of a row that has been read.
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
    const Reader& reader_;
    std::size_t lines_;
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
