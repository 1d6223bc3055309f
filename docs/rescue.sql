-- Views over an archive for the plain sqlite3 shell, which doesn't know the
-- collation GENERAL. They exist in the shell's session only; nothing is written
-- to the archive. See docs/store-format.md.
--
--     sqlite3 -readonly -init docs/rescue.sql Tolvek.Mdb
--
-- NOT INDEXED keeps the shell from choosing an index, which is ordered by GENERAL;
-- COLLATE BINARY replaces GENERAL in comparisons and sorts.
CREATE TEMP VIEW mails AS
SELECT rowid AS id,
       tblTolvek_YMD COLLATE BINARY AS day,
       tblTolvek_HMS COLLATE BINARY AS time,
       tblTolvek_SubKey AS sub_key,
       tblTolvek_SndRcvFlag <> 0 AS sent,
       tblTolvek_SndName COLLATE BINARY AS sender,
       tblTolvek_SndAdd COLLATE NOCASE AS sender_address,
       tblTolvek_RcvName COLLATE BINARY AS receiver,
       tblTolvek_RcvAdd COLLATE NOCASE AS receiver_address,
       tblTolvek_Subject COLLATE BINARY AS subject,
       tblTolvek_Mail1 || tblTolvek_Mail2 || tblTolvek_Mail3 || tblTolvek_Mail4 ||
       tblTolvek_Mail5 || tblTolvek_Mail6 || tblTolvek_Mail7 || tblTolvek_Mail8 ||
       tblTolvek_Mail9 || tblTolvek_Mail10 || tblTolvek_Mail11 || tblTolvek_Mail12 ||
       tblTolvek_Mail13 || tblTolvek_Mail14 || tblTolvek_Mail15 || tblTolvek_Mail16 AS text
FROM tblTolvek NOT INDEXED;

CREATE TEMP VIEW friends AS
SELECT tblFriend_Address COLLATE NOCASE AS address,
       tblFriend_Name COLLATE BINARY AS name,
       tblFriend_Pet COLLATE BINARY AS pet,
       tblFriend_PetKind COLLATE BINARY AS pet_kind,
       tblFriend_RecvMailCnt AS mails
FROM tblFriend NOT INDEXED;

CREATE TEMP VIEW rules AS
SELECT tblFilter_No AS number,
       tblFilter_TermsCode AS terms,
       tblFilter_ActionCode AS action,
       tblFilter_Header COLLATE BINARY AS title,
       tblFilter_Data COLLATE BINARY AS wanted
FROM tblFilter NOT INDEXED;
