#pragma once

#include "manual/manual_text.h"
#include "manual_pictures.h"

namespace orva::manual {

/// Words of a language that are not in the texts.
struct Words {
    QString title;
    QString contents;
    QString index;
    QString search;
    QString found;
    QString language; ///< as "en"
    QString cover;    ///< the picture there
};

/// Writes the PDF: title, contents with pages, chapters, index with pages, page numbers, bookmarks.
/// Says why not; empty: done.
QString writePdf(const ManualText& text, const Words& words, const Pictures& pictures,
                 const QString& file);

} // namespace orva::manual
