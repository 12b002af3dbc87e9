#pragma once
// Paints a search result entry of the form "Name — Parent / Grandparent": the name in the list's
// colour with the words of the search in bold, the parents' part in a dimmer shade of that colour.
// The length of the name part comes from the entry's CONST_iNameLengthRole; an entry without it is
// all name. The words are those of the search that made the entries (SetWords). GUI thread only.

#include <QString>
#include <QStringList>
#include <QStyledItemDelegate>
#include <QVector>

class CLS_SearchResultDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    static constexpr int CONST_iNameLengthRole = Qt::UserRole + 1;

    // One run of text painted in one way.
    struct STRCT_Segment
    {
        QString m_qstrText;
        bool m_blBold = false; // a matched word
        bool m_blDim = false;  // the parents' part
    };

    explicit CLS_SearchResultDelegate(QObject* _pParent = nullptr);

    void SetWords(const QStringList& _qlstWords) { m_qlstWords = _qlstWords; }
    const QStringList& GetWords() const { return m_qlstWords; }

    // The runs of an entry's text, in order; together they give the whole display text.
    QVector<STRCT_Segment> Segments(const QModelIndex& _index) const;
    // Runs of a name: every case-insensitive occurrence of a word is bold (overlaps merged).
    static QVector<STRCT_Segment> NameSegments(const QString& _qstrName, const QStringList& _qlstWords);

    void paint(QPainter* _pPainter, const QStyleOptionViewItem& _option,
               const QModelIndex& _index) const override;
    // The size of one short line: the list lays each entry out as wide as it shows, and a long path
    // is elided, never scrolled to.
    QSize sizeHint(const QStyleOptionViewItem& _option, const QModelIndex& _index) const override;

private:
    QStringList m_qlstWords;
};
