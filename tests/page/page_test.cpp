#include "page/page.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace scan695 {
namespace {

std::string PageOf(std::string_view document) {
    std::ostringstream out;
    page::WritePage(document, out);
    return out.str();
}

size_t Count(const std::string& text, const std::string& piece) {
    size_t count = 0;
    for (size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) {
        ++count;
    }
    return count;
}

TEST(Page, StandsAlone) {
    const std::string text = PageOf("{}");
    EXPECT_LT(text.size(), 300'000U);
    EXPECT_EQ(Count(text, "http"), Count(text, "http://www.w3.org/2000/svg") + 1);  // http-equiv
    for (const char* never : {"innerHTML", "outerHTML", "insertAdjacent", "document.write", "eval(",
                              "import ", "fetch(", "url(http", "src=", "@STYLE@", "@SCRIPT@"}) {
        EXPECT_EQ(Count(text, never), 0U) << never;
    }
    EXPECT_EQ(Count(text, "<script"), 2U);
    EXPECT_EQ(Count(text, "</script"), 2U);
    EXPECT_TRUE(text.ends_with("</html>\n"));
}

TEST(Page, DataIsNeverMarkup) {
    const std::string document = R"({"a": "</script><script>x</script>", "b": "<!--", "c": "\\<"})";
    const std::string text = PageOf(document);
    const std::string begin = "id=\"data\">\n";
    const size_t at = text.find(begin) + begin.size();
    std::string data = text.substr(at, text.find("\n</script>", at) - at);
    EXPECT_EQ(data.find('<'), std::string::npos);
    while (data.find("\\u003c") != std::string::npos) data.replace(data.find("\\u003c"), 6, "<");
    EXPECT_EQ(data, document);
}

}  // namespace
}  // namespace scan695
