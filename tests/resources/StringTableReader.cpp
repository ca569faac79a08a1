#include "StringTableReader.h"

#include <QStringDecoder>

namespace {

class Reader {
public:
    explicit Reader(QString text) : text_(std::move(text)) {}

    StringTable read()
    {
        StringTable table;
        while (skipBlanksAndComments() && at_ < text_.size()) {
            QString key, value;
            if (!quoted(key) || !expect(u'=') || !quoted(value) || !expect(u';')) {
                table.error = QStringLiteral("line %1: %2").arg(line_).arg(problem_);
                return table;
            }
            table.entries.emplace_back(std::move(key), std::move(value));
        }
        if (!problem_.isEmpty())
            table.error = QStringLiteral("line %1: %2").arg(line_).arg(problem_);
        return table;
    }

private:
    bool fail(const QString& problem)
    {
        problem_ = problem;
        return false;
    }

    QChar peek(qsizetype ahead = 0) const
    {
        return at_ + ahead < text_.size() ? text_[at_ + ahead] : QChar();
    }

    void step()
    {
        if (text_[at_] == u'\n')
            ++line_;
        ++at_;
    }

    bool skipBlanksAndComments()
    {
        while (at_ < text_.size()) {
            if (peek().isSpace()) {
                step();
            } else if (peek() == u'/' && peek(1) == u'*') {
                const int opened = line_;
                at_ += 2;
                while (at_ < text_.size() && !(peek() == u'*' && peek(1) == u'/'))
                    step();
                if (at_ >= text_.size()) {
                    line_ = opened;
                    return fail(QStringLiteral("comment never closed"));
                }
                at_ += 2;
            } else if (peek() == u'/' && peek(1) == u'/') {
                while (at_ < text_.size() && peek() != u'\n')
                    step();
            } else {
                break;
            }
        }
        return true;
    }

    bool expect(QChar wanted)
    {
        if (!skipBlanksAndComments())
            return false;
        if (peek() != wanted)
            return fail(QStringLiteral("expected '%1'").arg(wanted));
        step();
        return true;
    }

    // A text between double quotes on one line; the escapes are \" \\ and \n.
    bool quoted(QString& out)
    {
        if (!expect(u'"'))
            return false;
        while (at_ < text_.size() && peek() != u'"') {
            if (peek() == u'\n')
                return fail(QStringLiteral("text runs past the end of its line"));
            if (peek() == u'\\') {
                step();
                const QChar escaped = peek();
                if (escaped == u'"' || escaped == u'\\')
                    out.append(escaped);
                else if (escaped == u'n')
                    out.append(u'\n');
                else
                    return fail(QStringLiteral("unknown escape \\%1").arg(escaped));
            } else {
                out.append(peek());
            }
            step();
        }
        if (at_ >= text_.size())
            return fail(QStringLiteral("text never closed"));
        step();
        return true;
    }

    QString text_;
    qsizetype at_ = 0;
    int line_ = 1;
    QString problem_;
};

} // namespace

StringTable readStringTable(const QByteArray& utf8)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(utf8);
    if (decoder.hasError())
        return {{}, QStringLiteral("not valid UTF-8")};
    if (text.startsWith(QChar::ByteOrderMark))
        return {{}, QStringLiteral("starts with a byte order mark")};
    return Reader(std::move(text)).read();
}
