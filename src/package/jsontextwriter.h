#pragma once

#include <QByteArray>
#include <QLatin1StringView>
#include <QString>
#include <QStringView>
#include <memory>
#include <vector>

class QIODevice;

namespace tavik {

// Writes JSON text as it goes, in exactly the layout of QJsonDocument::toJson(Indented): four
// spaces per level, ", " nowhere, "\"name\": " before values, "}\n" after the outermost object.
// Names are written in the order given; callers give them sorted, as QJsonObject keeps them.
// With a device, the text goes out in chunks, so a dump of any size needs no more memory than
// one chunk.
class JsonTextWriter {
public:
    JsonTextWriter() = default;
    explicit JsonTextWriter(QIODevice* device);
    ~JsonTextWriter();
    JsonTextWriter(const JsonTextWriter&) = delete;
    JsonTextWriter& operator=(const JsonTextWriter&) = delete;

    // The name of the next value inside an object.
    JsonTextWriter& name(QLatin1StringView name);

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    void integer(qint64 value);
    void boolean(bool value);
    // Infinities and NaNs are written as null, as QJsonDocument does.
    void number(double value);
    void string(QStringView text);
    void null();

    // Sends what is buffered to the device; false when the device refused it.
    bool flush();
    // Without a device: the text written so far.
    QByteArray text() const { return QByteArray(buffer_.get(), size_); }

private:
    char* grow(qsizetype count) {
        if (size_ + count > capacity_)
            enlarge(size_ + count);
        char* at = buffer_.get() + size_;
        size_ += count;
        return at;
    }
    void enlarge(qsizetype needed);
    void put(const char* text, qsizetype count);
    void put(char c);
    void beginValue();
    void open(char bracket);
    void close(char bracket);
    void indent(qsizetype level);
    void escaped(QStringView text);
    void flushWhenFull();

    QIODevice* device_ = nullptr;
    // The text not yet sent, in memory of its own: QByteArray's appends and resizes of a few
    // bytes at a time cost more than the bytes.
    std::unique_ptr<char[]> buffer_;
    qsizetype size_ = 0;
    qsizetype capacity_ = 0;
    QLatin1StringView pendingName_;
    // Per open container: whether it holds a value yet.
    std::vector<bool> filled_;
    bool failed_ = false;
};

} // namespace tavik
