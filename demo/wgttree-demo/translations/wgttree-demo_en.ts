<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>CLS_DemoWindow</name>
    <message>
        <source>WgtTreeWidget demo</source>
        <translation>WgtTreeWidget demo</translation>
    </message>
    <message>
        <source>Event log</source>
        <translation>Event log</translation>
    </message>
    <message>
        <source>Custom tree (check, drag to reorder)</source>
        <translation>Custom tree (check, drag to reorder)</translation>
    </message>
    <message>
        <source>Favourites</source>
        <translation>Favourites</translation>
    </message>
    <message>
        <source>All channels</source>
        <translation>All channels</translation>
    </message>
    <message>
        <source>On line</source>
        <translation>On line</translation>
    </message>
    <message>
        <source>Off line</source>
        <translation>Off line</translation>
    </message>
    <message>
        <source>Status filter</source>
        <translation>Status filter</translation>
    </message>
    <message>
        <source>Resources</source>
        <translation>Resources</translation>
    </message>
    <message>
        <source>Show:</source>
        <translation>Show:</translation>
    </message>
    <message>
        <source>Layout</source>
        <translation>Layout</translation>
    </message>
    <message>
        <source>layout: %1 of %2 dragged rows added</source>
        <translation>layout: %1 of %2 dragged rows added</translation>
    </message>
    <message>
        <source>Layout (drop cameras here)</source>
        <translation>Layout (drop cameras here)</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Events</translation>
    </message>
    <message>
        <source>double click: %1</source>
        <translation>double click: %1</translation>
    </message>
    <message>
        <source>favourite selected: %1</source>
        <translation>favourite selected: %1</translation>
    </message>
    <message>
        <source>the saved view of the resource tree could not be read</source>
        <translation>the saved view of the resource tree could not be read</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>Open the live view</source>
        <translation>Open the live view</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>Playback</translation>
    </message>
    <message>
        <source>Play the recordings back</source>
        <translation>Play the recordings back</translation>
    </message>
    <message>
        <source>the device layer gives no resource tree</source>
        <translation>the device layer gives no resource tree</translation>
    </message>
    <message>
        <source>the device layer lists no resource</source>
        <translation>the device layer lists no resource</translation>
    </message>
    <message>
        <source>All resources</source>
        <translation>All resources</translation>
    </message>
    <message>
        <source>the resource tree could not be built</source>
        <translation>the resource tree could not be built</translation>
    </message>
    <message>
        <source>Custom tree</source>
        <translation>Custom tree</translation>
    </message>
    <message>
        <source>no custom tree in this installation</source>
        <translation>no custom tree in this installation</translation>
    </message>
    <message>
        <source>no favourites in this installation</source>
        <translation>no favourites in this installation</translation>
    </message>
    <message>
        <source>installation: %1 hosts, %2 channels, %3 rows</source>
        <translation>installation: %1 hosts, %2 channels, %3 rows</translation>
    </message>
    <message>
        <source>status batch %1: %2 channels, %3 on, %4 off</source>
        <translation>status batch %1: %2 channels, %3 on, %4 off</translation>
    </message>
    <message>
        <source>menu: %1 on %2%3</source>
        <translation>menu: %1 on %2%3</translation>
    </message>
    <message>
        <source> (checked)</source>
        <translation> (checked)</translation>
    </message>
    <message>
        <source>check batch of %1: %2</source>
        <translation>check batch of %1: %2</translation>
    </message>
    <message>
        <source>screen scale %1, no application hub to tell</source>
        <translation>screen scale %1, no application hub to tell</translation>
    </message>
    <message>
        <source>screen scale %1: SignResizeView sent</source>
        <translation>screen scale %1: SignResizeView sent</translation>
    </message>
    <message>
        <source>%1 hosts  ·  %2 channels, %3 on line  ·  %4 status batches  ·  %5 simulated changes</source>
        <translation>%1 hosts  ·  %2 channels, %3 on line  ·  %4 status batches  ·  %5 simulated changes</translation>
    </message>
    <message>
        <source>Preview all channels</source>
        <translation>Preview all channels</translation>
    </message>
    <message>
        <source>Open preview</source>
        <translation>Open preview</translation>
    </message>
    <message>
        <source>View</source>
        <translation>View</translation>
    </message>
    <message>
        <source>Show channel numbers</source>
        <translation>Show channel numbers</translation>
    </message>
    <message>
        <source>Show off-line channels</source>
        <translation>Show off-line channels</translation>
    </message>
    <message>
        <source>Expand all</source>
        <translation>Expand all</translation>
    </message>
    <message>
        <source>Collapse all</source>
        <translation>Collapse all</translation>
    </message>
    <message>
        <source>Refresh states</source>
        <translation>Refresh states</translation>
    </message>
    <message>
        <source>Remote configuration</source>
        <translation>Remote configuration</translation>
    </message>
</context>
</TS>
