// WeightRows: the list of a table's rows (weightRows.h gives their encoding), kept in blocks of
// rows so that copying the list costs little at any size. A copy shares every block; a change
// through a non-const access first gives the list being changed its own copy of that block
// (1,024 row handles) and of the block list, so a snapshot of a million rows costs about a
// thousand handle copies and an edit after it one block, never the whole list. Rows are
// implicitly shared vectors themselves: a row that does not change is never copied.
//
// The interface is the part of QVector's that the table uses; indices must be within the list
// (asserted), except for value().
#pragma once

#include <QVector>

using WeightRow = QVector<double>;

class WeightRows {
    static constexpr int kShift = 10;
    static constexpr int kBlock = 1 << kShift;
    static constexpr int kMask = kBlock - 1;
    using Block = QVector<WeightRow>;

public:
    template <typename List, typename Row> class Iterator {
    public:
        Iterator(List* list, int position) : list(list), position(position) {}
        Row& operator*() const { return (*list)[position]; }
        Iterator& operator++() {
            ++position;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return position != other.position; }
        bool operator==(const Iterator& other) const { return position == other.position; }

    private:
        List* list;
        int position;
    };
    using const_iterator = Iterator<const WeightRows, const WeightRow>;
    using iterator = Iterator<WeightRows, WeightRow>;

    int size() const { return rowCount; }
    bool isEmpty() const { return rowCount == 0; }

    const WeightRow& at(int row) const {
        Q_ASSERT(row >= 0 && row < rowCount);
        return blocks.at(row >> kShift).at(row & kMask);
    }
    const WeightRow& operator[](int row) const { return at(row); }
    WeightRow& operator[](int row) {
        Q_ASSERT(row >= 0 && row < rowCount);
        return blocks[row >> kShift][row & kMask];
    }
    // The row, or an empty one outside the list.
    WeightRow value(int row) const { return row >= 0 && row < rowCount ? at(row) : WeightRow(); }

    void append(const WeightRow& row) {
        if ((rowCount & kMask) == 0) {
            blocks.append(Block());
            blocks.last().reserve(kBlock);
        }
        blocks.last().append(row);
        ++rowCount;
    }
    void reserve(int rows) { blocks.reserve((rows + kMask) >> kShift); }
    void clear() {
        blocks.clear();
        rowCount = 0;
    }

    // Shared blocks compare equal at once.
    bool operator==(const WeightRows& other) const {
        return rowCount == other.rowCount && blocks == other.blocks;
    }
    bool operator!=(const WeightRows& other) const { return !(*this == other); }

    const_iterator begin() const { return const_iterator(this, 0); }
    const_iterator end() const { return const_iterator(this, rowCount); }
    iterator begin() { return iterator(this, 0); }
    iterator end() { return iterator(this, rowCount); }

private:
    QVector<Block> blocks;
    int rowCount = 0;
};
