import { AnalysisPicker } from "../results/analysis_picker.tsx";
import { Remarks } from "../results/remarks.tsx";
import { GuideCard } from "./guide_card.tsx";
import { LandmarkList } from "./landmark_list.tsx";

export function LandmarksPanel() {
  return (
    <>
      <GuideCard />
      <Remarks />
      <AnalysisPicker />
      <LandmarkList />
    </>
  );
}
