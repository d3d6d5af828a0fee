<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: LicenseRef-ZYL-Proprietary -->
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>ZYLTest</name>
    <message>
        <source>Course</source>
        <translation>Bahn</translation>
    </message>
</context>
</TS>
