<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" sourcelanguage="en">
<context>
    <name>kestrel::Alert</name>
    <message>
        <source>Kestrel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::BatchAnnouncer</name>
    <message>
        <source>Converting</source>
        <extracomment>A batch has begun.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Conversion finished: %1, %2</source>
        <extracomment>&quot;2 complete&quot; and &quot;1 failed&quot;.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Conversion stopped: %1, %2</source>
        <extracomment>&quot;2 complete&quot; and &quot;1 failed&quot;. The user cancelled, and some files are left.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n complete</source>
        <extracomment>How many files were converted.</extracomment>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n failed</source>
        <extracomment>How many files could not be converted.</extracomment>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
</context>
<context>
    <name>kestrel::BatchPresence</name>
    <message>
        <source>Converting audio files</source>
        <extracomment>Why the machine stays awake, where the desktop lists the reasons.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::CaptionButton</name>
    <message>
        <source>Minimise</source>
        <extracomment>A button of the window.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restore</source>
        <extracomment>A button of a maximised window, which gives it its former size.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Maximise</source>
        <extracomment>A button of the window.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <extracomment>A button of the window.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::ConverterViewModel</name>
    <message>
        <source>There is not enough memory.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose Opus audio to convert</source>
        <extracomment>The title of a panel.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Audio</source>
        <extracomment>The button that confirms a panel.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a folder of Opus audio</source>
        <extracomment>The title of a panel.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Folder</source>
        <extracomment>The button that confirms a panel.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose output folder</source>
        <extracomment>The title of a panel.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose</source>
        <extracomment>The button that confirms a panel.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add at least one Opus file first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose an output folder first.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::DestinationButton</name>
    <message>
        <source>Save to</source>
        <extracomment>Stands above the path of the output folder.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save to %1</source>
        <extracomment>The path of the output folder, or &quot;Choose destination…&quot;.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::DropZone</name>
    <message>
        <source>Drop zone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drop Opus audio or folders here to queue them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drop Opus audio or folders here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Queue a single track or an entire folder tree.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose Audio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose Folder</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::FFmpegError</name>
    <message>
        <source>FFmpeg could not convert this file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FFmpeg was not found. Install it with Homebrew: brew install ffmpeg</source>
        <extracomment>Ends in a command, which stays as it is.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Conversion cancelled.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::FormatGroup</name>
    <message>
        <source>Output format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <extracomment>A format&apos;s place among all: &quot;1 of 3&quot;.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::JobList</name>
    <message>
        <source>Overall progress</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::JobRow</name>
    <message>
        <source>Remove</source>
        <extracomment>Takes a file out of the queue.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>•</source>
        <extracomment>Stands between a folder&apos;s name and a file&apos;s state.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <extracomment>A row&apos;s place among all: &quot;3 of 120&quot;.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, in %2, %3</source>
        <extracomment>A file&apos;s name, its folder, and its state: &quot;track.opus, in Album, Ready&quot;.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, in %2, %3, %4</source>
        <extracomment>The same with why it failed: &quot;track.opus, in Album, Failed, Not an audio file&quot;.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Progress of %1</source>
        <extracomment>How far the conversion of a file is.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::JobScrollArea</name>
    <message>
        <source>Files</source>
        <extracomment>The list of the queued files.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::KestrelApp</name>
    <message>
        <source>Kestrel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Audio…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Folder…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quit</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::OpenPanel</name>
    <message>
        <source>Supported files</source>
        <extracomment>Which files a panel offers. Their names&apos; patterns follow in parentheses.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::PercentLabel</name>
    <message>
        <source>%1%</source>
        <extracomment>A percentage, such as 82%.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::PlatformError</name>
    <message>
        <source>The folder “%1” could not be created: %2.</source>
        <extracomment>The path of a folder, and the system&apos;s error message.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The program “%1” could not be started: %2.</source>
        <extracomment>The path of a program, and the system&apos;s error message.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection to the program “%1” was lost: %2.</source>
        <extracomment>The path of a program, and the system&apos;s error message.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kestrel::QueueView</name>
    <message>
        <source>Conversion Queue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Folder</source>
        <extracomment>A button that lets the user add a folder.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Audio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show output folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add OPUS, OGG, or OGA files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 audio file</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n audio files</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n complete</source>
        <extracomment>How many of the files are converted.</extracomment>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>%1 · %2</source>
        <extracomment>&quot;3 audio files&quot; and &quot;2 complete&quot;.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Convert 1 File</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Convert %n Files</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
</context>
<context>
    <name>kestrel::SettingsSidebar</name>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Kestrel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opus, made universal</source>
        <extracomment>What the program does, in a few words below its name.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>percent</source>
        <extracomment>The unit of the quality, said after its value.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bit depth</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Higher quality creates larger MP3 files.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AIFF and WAV preserve uncompressed PCM audio.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FFmpeg ready</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FFmpeg required</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
