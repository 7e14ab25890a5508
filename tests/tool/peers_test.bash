# Cases of `xmldom value` beside xmlstarlet and xmllint, on files of many kinds.

. "$(dirname "$0")/driver.bash"

compare_values=$(realpath "$(dirname "$0")/compare-values")

_given_files() {
  given config.xml '<?xml version="1.0"?>\n<!-- local -->\n<config version="2">
  <!-- first -->\n  <interface id="1" name="eth0">\n\t<mtu> 1500 </mtu>\n  </interface>\n
  <interface name="lo"><!-- none --></interface>\n  <note>a &lt; b &amp;&#x26; c&#13;d</note>\n</config>\n'
  given a.gir '<repository xmlns="http://www.gtk.org/introspection/core/1.0"
 xmlns:c="http://www.gtk.org/introspection/c/1.0" version="1.2"><namespace name="Gio" version="2.0">
<function name="open" c:identifier="g_open"><doc xml:space="preserve">Opens  it.\n\nMay %NULL.</doc>
<return-value transfer-ownership="none"><type name="none" c:type="void"/></return-value></function>
</namespace></repository>\n'
  given docbook.xml '<?xml version="1.0"?>\n<!DOCTYPE article PUBLIC "-//OASIS//DTD DocBook XML V4.5//EN"
 "http://www.oasis-open.org/docbook/xml/4.5/docbookx.dtd" [\n<!ENTITY product "The <emphasis>x</emphasis> Tool">
<!ENTITY year "2026">\n]>\n<article id="a"><title>&product;</title><para>Mixed <code>text</code>, in &year;.
<programlisting><![CDATA[if (a < b && c)\n\treturn;\n]]></programlisting></para></article>\n'
  given a.svg '<svg xmlns="http://www.w3.org/2000/svg" version="1.1" viewBox="0 0 1 1"><defs>
<style type="text/css"><![CDATA[.a > .b { fill: "red" }]]></style></defs><g id="g1"><path id="p" d="M0,0
  L1,1"/><text>\n one <tspan>two</tspan>\n</text></g></svg>'
  given a.plist '<?xml version="1.0" encoding="UTF-8"?>\n<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN"
 "http://www.apple.com/DTDs/PropertyList-1.0.dtd">\n<plist version="1.0">\n<dict>\n\t<key>Name</key>
\t<string>Caf\xc3\xa9 \xf0\x9f\x99\x82</string>\n\t<key>Empty</key>\n\t<string></string>\n\t<true/>\n</dict>\n</plist>\n'
  given pom.xml '<project xmlns="http://maven.apache.org/POM/4.0.0"
  xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="a b">
  <modelVersion>4.0.0</modelVersion>\n  <dependencies>\n    <dependency><groupId>junit</groupId>
    <version>4.12</version></dependency>\n    <dependency><groupId>x</groupId></dependency>
  </dependencies>\n  <name>\n    Wrapped\n    name\n  </name>\n</project>\n'
  given rss.xml '<rss version="2.0"><channel><title>News &#8212; today</title><item><title>1</title>
<description><![CDATA[<p>Bold & <b>new</b></p>]]> and more</description></item><item id="2"/></channel></rss>'
  given crlf.xml '<r>\r\n  <a id="x&#13;&#10;y"\r\n name="1\r\n2">one\r\ntwo\r</a>\r\n<b/></r>\r\n'
  given latin1.xml '<?xml version="1.0" encoding="ISO-8859-1"?>\n<r><a name="\xe4\xf6">Stra\xdfe</a>\xfc</r>\n'
  given defaults.xml '<!DOCTYPE r [<!ATTLIST a id NMTOKEN "z" name NMTOKENS #IMPLIED>]>
<r><a name="  p   q "/><a id="own">&#9;</a></r>'
}

_need_peers() {
  if ! xmllint --version >/dev/null 2>&1 || ! xmlstarlet --version >/dev/null 2>&1; then
    skip 'there are no xmllint and xmlstarlet here'
  fi
}

values_of_files_of_many_kinds_are_those_of_others() {
  _need_peers
  _given_files
  local files=(*)
  # Each file takes twenty processes.
  if [ "$slowness" -ge 20 ]; then files=(crlf.xml docbook.xml); fi
  keep "$compare_values" "$tool" "${files[@]}"
  expect 0 "${#files[@]} compared, 0 differ, 0 refused, 0 not read by others\n" ''
}

values_of_a_file_in_UTF_16_are_those_of_others() {
  _need_peers
  given a.xml '<?xml version="1.0" encoding="UTF-8"?>\n<r><a n="\xc3\xa9">\xe2\x82\xac \xf0\x9f\x99\x82</a>\n</r>'
  sed 's/UTF-8/UTF-16/' a.xml | iconv -f UTF-8 -t UTF-16 > wide.xml
  keep xmlstarlet select --text --template --value-of //a --output ' ' --value-of //a/@n --nl wide.xml
  expect 0 '\xe2\x82\xac \xf0\x9f\x99\x82 \xc3\xa9\n' ''
  run value -f . -f @n --separator ' ' //a wide.xml
  expect 0 '\xe2\x82\xac \xf0\x9f\x99\x82 \xc3\xa9\n' ''
}

run_cases
