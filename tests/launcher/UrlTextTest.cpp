#include "launcher/UrlText.h"

#include <gtest/gtest.h>

#include <QString>

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

void expectUrls(std::initializer_list<QString> texts, bool expected) {
    for (const QString &text : texts)
        EXPECT_EQ(isUrl(text), expected) << text.toStdString();
}

TEST(UrlText, SchemeIsALetterAndMore) {
    expectUrls({u"a:"_s, u"A1+-.z:x"_s, u"https://example.com/"_s}, true);
    expectUrls({QString(), u":"_s, u"://x"_s, u"1a:x"_s, u"+a:x"_s, u"a_b:x"_s, u"a%41:x"_s,
                u"relative"_s, u"/a:b"_s, u"?a:b"_s, u"#a:b"_s, u"//host/x"_s},
               false);
}

TEST(UrlText, HostMayHaveAnyPlainNameOrEscapes) {
    expectUrls({u"tel://5551234"_s, u"steam://440"_s, u"shortcuts://RunMe/Do?Name=X"_s,
                u"x-item://8F5B2A1C"_s, u"message://%3CAb%40c%3E"_s, u"foo://a%20b/c"_s,
                u"foo://a..b"_s, u"foo://-x-"_s, u"foo://"_s, u"foo:///x"_s, u"foo://!$&'()*+,;="_s,
                u"foo://999.999.999.999/"_s},
               true);
    expectUrls({u"foo://a b"_s, u"foo://a%2"_s, u"foo://a%"_s, u"foo://a%zz"_s, u"foo://a[b"_s,
                u"foo://a\\b"_s, u"foo://a\"b"_s, u"foo://<a>"_s},
               false);
}

TEST(UrlText, PortIsAnyNumberOfDigits) {
    expectUrls({u"foo://h:99999/"_s, u"foo://h:/"_s, u"foo://h:"_s, u"foo://:1"_s,
                u"foo://[::1]:123456789012345678901234567890"_s},
               true);
    expectUrls({u"foo://h:x"_s, u"foo://h:1:2"_s, u"foo://h:-1"_s, u"foo://h:%31"_s,
                u"foo://[::1]x"_s, u"foo://[::1]:x"_s},
               false);
}

TEST(UrlText, UserInformationComesBeforeTheHost) {
    expectUrls({u"foo://u:p:q@h"_s, u"foo://@h"_s, u"foo://u%40@h:1/"_s}, true);
    expectUrls({u"foo://a@b@c"_s, u"foo://a[@h"_s, u"foo://u%@h"_s}, false);
}

TEST(UrlText, AddressesStandInBrackets) {
    expectUrls({u"foo://[::]"_s, u"foo://[2001:db8::7]/c=GB?x"_s, u"foo://[1:2:3:4:5:6:7:8]"_s,
                u"foo://[::ffff:192.0.2.1]"_s, u"foo://u@[::1]:1"_s, u"foo://[v1F.a:b!]"_s,
                u"foo://[V1.x]"_s},
               true);
    expectUrls({u"foo://[]"_s, u"foo://[1:2:3]"_s, u"foo://[::g]"_s, u"foo://[::12345]"_s,
                u"foo://[1::2::3]"_s, u"foo://[::1"_s, u"foo://::1]"_s, u"foo://[::1%25eth0]"_s,
                u"foo://[::1"_s + QChar(u'\0') + u"]"_s, u"foo://[192.0.2.1]"_s, u"foo://[v.x]"_s,
                u"foo://[v1.]"_s, u"foo://[v1]"_s, u"foo://[vg.x]"_s, u"foo://[v1.%41]"_s},
               false);
}

TEST(UrlText, PathQueryAndFragment) {
    expectUrls({u"foo:Bar%7ebaz"_s, u"foo:a:b@c//d"_s, u"foo:/"_s, u"foo:?"_s, u"foo:#"_s,
                u"foo://h?q#f"_s, u"foo://h?a?b/c:@d#e?f/g:@h"_s, u"foo://h#"_s, u"foo:?a://b"_s},
               true);
    expectUrls(
        {u"foo:a b"_s, u"foo:a#b#c"_s, u"foo:a?b[c]"_s, u"foo:a#%4"_s, u"foo:a?%"_s, u"foo:a|b"_s,
         u"foo:a^b"_s, u"foo:a`b"_s, u"foo:{a}"_s, u"foo://h/a\nb"_s, u"foo:a\tb"_s},
        false);
}

TEST(UrlText, OtherLettersHaveToBeEscaped) {
    expectUrls({u"foo:é"_s, u"foo://bücher.example"_s, u"foo:?ü"_s, u"foo:#中"_s, u"foo://[٣::]"_s,
                u"ſoo:x"_s, u"foo://h:٣"_s},
               false);
}

}  // namespace

}  // namespace kestrelbay
