<?xml version="1.0" encoding="UTF-8"?>
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html"/>

  <xsl:template match="/library">
    <html>
      <head>
        <title>Library</title>
        <style>
          body { font: 16px/1.5 "DejaVu Serif", serif; margin: 2em 3em; color: #222; }
          h1 { font-weight: normal; border-bottom: 2px solid #2a5d84; padding-bottom: .2em; }
          h2 { color: #2a5d84; margin: 1.2em 0 .3em; }
          table { border-collapse: collapse; width: 100%; }
          td { padding: .3em 1em .3em 0; border-bottom: 1px solid #ddd; }
          td:last-child { text-align: right; color: #666; }
        </style>
      </head>
      <body>
        <h1>Library</h1>
        <xsl:apply-templates select="shelf"/>
      </body>
    </html>
  </xsl:template>

  <xsl:template match="shelf">
    <h2><xsl:value-of select="@name"/></h2>
    <table>
      <xsl:for-each select="book">
        <xsl:sort select="year" data-type="number"/>
        <tr>
          <td><i><xsl:value-of select="title"/></i></td>
          <td><xsl:value-of select="author"/></td>
          <td><xsl:value-of select="year"/></td>
        </tr>
      </xsl:for-each>
    </table>
  </xsl:template>
</xsl:stylesheet>
