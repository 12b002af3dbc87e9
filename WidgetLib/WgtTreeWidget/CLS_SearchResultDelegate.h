#pragma once
// Paints a search result entry of the form "Name — Parent / Grandparent": the name in the list's
// colour with the words of the search in bold, the parents' part in a dimmer shade of that colour.
// The length of the name part comes from the entry's CONST_iNameLengthRole; an entry without it is
// all name. The words are those of the search that made the entries (SetWords). GUI thread only.

#include <QString>
#include <QStringList>
#include <QStyledItemDelegate>
#include <QVector>

/// Delegate of the search result list while result paths are shown.
///
/// Paints an entry "Name — Parent / Grandparent" on one line: the name in the list's text colour
/// with every occurrence of a search word in bold, the parents' part at 55 percent of that colour's
/// opacity, elided at the right end when the line is too narrow. Background, selection and focus
/// are the style's. Made and owned by CLS_DeviceTreeWordSearch. GUI thread only.
class CLS_SearchResultDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// Item data role holding the length (in QChar units) of the name part of the display text;
    /// the rest is the parents' part. An entry without it is all name; a value out of range is
    /// clamped to the text.
    static constexpr int CONST_iNameLengthRole = Qt::UserRole + 1;

    /// One run of text painted in one way.
    struct STRCT_Segment
    {
        QString m_qstrText;    ///< the characters of the run
        bool m_blBold = false; ///< a matched word: painted in bold
        bool m_blDim = false;  ///< the parents' part: painted in the dimmer colour
    };

    /// Makes a delegate with no search words. @p _pParent owns it.
    explicit CLS_SearchResultDelegate(QObject* _pParent = nullptr);

    /// The words to show in bold, those of the search that made the entries; repaint the list to
    /// show a change. Empty words are passed over.
    void SetWords(const QStringList& _qlstWords) { m_qlstWords = _qlstWords; }
    /// The words set last by SetWords().
    const QStringList& GetWords() const { return m_qlstWords; }

    /// The runs of an entry's display text, in order; together they give the whole text. The name
    /// part is cut by NameSegments(), the parents' part is one dim run.
    QVector<STRCT_Segment> Segments(const QModelIndex& _index) const;
    /// Runs of a name: every case-insensitive occurrence of a word is bold (overlapping or adjacent
    /// occurrences make one run), the rest plain. Empty for an empty name. Any thread.
    static QVector<STRCT_Segment> NameSegments(const QString& _qstrName, const QStringList& _qlstWords);

    /// Paints the entry's background, selection and focus with the style, then its runs
    /// (Segments()) on one line; the run that does not fit is elided and ends the line.
    void paint(QPainter* _pPainter, const QStyleOptionViewItem& _option,
               const QModelIndex& _index) const override;
    /// The size of one short line: the list lays each entry out as wide as it shows, and a long path
    /// is elided, never scrolled to.
    QSize sizeHint(const QStyleOptionViewItem& _option, const QModelIndex& _index) const override;

private:
    QStringList m_qlstWords;
};
