<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>CLS_WgtTreeWidget</name>
    <message>
        <source>Form</source>
        <translation>Resource tree</translation>
    </message>
    <message>
        <source>msg_no_results</source>
        <translation>No results</translation>
    </message>
    <message>
        <source>acc_search_input</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>acc_search_input_desc</source>
        <translation>Type part of a name to find rows in the tree. Down moves to the results, Escape clears the search.</translation>
    </message>
    <message>
        <source>acc_search_result</source>
        <translation>Search results</translation>
    </message>
    <message>
        <source>acc_search_result_desc</source>
        <translation>Rows whose names match the search. Return goes to the row, Up on the first result returns to the search line, Escape clears the search.</translation>
    </message>
    <message>
        <source>acc_btn_clear</source>
        <translation>Clear search</translation>
    </message>
    <message>
        <source>acc_btn_clear_desc</source>
        <translation>Empties the search line and closes the results.</translation>
    </message>
    <message>
        <source>acc_btn_search</source>
        <translation>Start search</translation>
    </message>
    <message>
        <source>acc_btn_search_desc</source>
        <translation>Searches the tree for the text in the search line.</translation>
    </message>
</context>
<context>
    <name>CLS_WgtItemToolBar</name>
    <message>
        <source>acc_item_btn_desc</source>
        <translation>Acts on the row of this button.</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>lbl_car_calor_white</source>
        <translation>White</translation>
    </message>
    <message>
        <source>lbl_car_calor_red</source>
        <translation>Red</translation>
    </message>
    <message>
        <source>lbl_car_calor_yellow</source>
        <translation>Yellow</translation>
    </message>
    <message>
        <source>lbl_car_calor_blue</source>
        <translation>Blue</translation>
    </message>
    <message>
        <source>lbl_car_calor_green</source>
        <translation>Green</translation>
    </message>
    <message>
        <source>lbl_car_calor_purple</source>
        <translation>Purple</translation>
    </message>
    <message>
        <source>lbl_car_calor_black</source>
        <translation>Black</translation>
    </message>
    <message>
        <source>lbl_car_calor_grey</source>
        <translation>Grey</translation>
    </message>
    <message>
        <source>lbl_car_calor_cyan</source>
        <translation>Cyan</translation>
    </message>
    <message>
        <source>lbl_car_calor_brown</source>
        <translation>Brown</translation>
    </message>
</context>
</TS>
