#pragma once
// What a page rendered to HTML shows: knitr, R Markdown, Quarto and pkgdown
// put a program's printed output in <pre><code> blocks, its characters
// escaped as entities. The readers read the text a browser shows, line for
// line, so that a model's line in the page is its line in the file.
#include <string>
#include <string_view>

namespace drav::selection::fits {

// Whether `text` is an HTML page or fragment: it opens with a tag, or holds
// a <pre> block.
bool LooksLikeHtml(std::string_view text);

// `text` without its tags, its entities (&lt; &gt; &amp; &quot; &#39;
// &nbsp; and numeric ones below 128) as the characters they stand for,
// every line end kept.
std::string HtmlText(std::string_view text);

}  // namespace drav::selection::fits
