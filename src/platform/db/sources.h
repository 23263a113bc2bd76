#pragma once

#include "platform/db/buffered_cursor.h"
#include "platform/db/recordset.h"

#include <functional>

namespace quilla {

/// What stands behind a recordset: the walk over the rows, and the fields of the current one, which
/// become values when they are asked for.
class Recordset::Source {
public:
    virtual ~Source() = default;

    virtual qsizetype recordCount() const = 0;
    virtual bool eof() const = 0;
    void next();
    void first();

    const std::vector<Field>& fields() const { return *m_fields; }
    const Fields& sharedFields() const { return m_fields; }
    const Value& field(int index);
    /// Of the current row.
    virtual Cell cell(int column) = 0;
    virtual Recordset child(QStringView name) const;

protected:
    explicit Source(Fields fields);

    virtual void moveNext() = 0;
    virtual void moveFirst() = 0;

private:
    void forgetRow();

    struct Slot {
        Value value;
        bool known = false;
    };

    Fields m_fields;
    std::vector<Slot> m_slots; ///< the fields of the current row that were asked for
};

/// All rows at once.
class KeysetSource final : public Recordset::Source {
public:
    /// Reads the cursor to its end.
    explicit KeysetSource(Cursor& cursor);

    qsizetype recordCount() const override { return m_rows.count(); }
    bool eof() const override { return m_row >= m_rows.count(); }
    Cell cell(int column) override { return m_rows.cell(m_row, column); }
    const BufferedRows& rows() const { return m_rows; }

private:
    void moveNext() override { ++m_row; }
    void moveFirst() override { m_row = 0; }

    BufferedRows m_rows;
    qsizetype m_row = 0;
};

/// One row at a time, straight from the engine.
class ForwardSource final : public Recordset::Source {
public:
    /// `released` is called once, when the cursor is not needed any more.
    ForwardSource(std::unique_ptr<Cursor> cursor, std::function<void()> released);
    ~ForwardSource() override;
    Q_DISABLE_COPY_MOVE(ForwardSource)

    qsizetype recordCount() const override { return -1; }
    bool eof() const override { return !m_cursor; }
    Cell cell(int column) override { return m_cursor->cell(column); }

private:
    void release();
    void moveNext() override;
    void moveFirst() override;

    std::unique_ptr<Cursor> m_cursor; ///< none at the end
    std::function<void()> m_released;
};

} // namespace quilla
